#pragma once

#include <QCoreApplication>

#include "Quorvi/ui/WindowServices.h"
#include "Quorvi/ui/design/Page.h"

namespace quorvi {

// Every setting, section by section.
class SettingsPage : public Page {
    Q_DECLARE_TR_FUNCTIONS(SettingsPage)

public:
    explicit SettingsPage(const WindowServices& services);
};

}  // namespace quorvi
