#pragma once

#include <QCoreApplication>

#include "Quorvi/ui/WindowServices.h"
#include "Quorvi/ui/widgets/Page.h"

namespace quorvi {

// The page with all settings sections.
class SettingsPage : public Page {
    Q_DECLARE_TR_FUNCTIONS(SettingsPage)

public:
    explicit SettingsPage(const WindowServices& services);
};

}  // namespace quorvi
