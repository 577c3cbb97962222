#pragma once

#include <QCoreApplication>

#include "Quorvi/ui/WindowServices.h"
#include "Quorvi/ui/widgets/Page.h"

namespace quorvi {

// The first page: setup for a new user, status, last transcript, and a field to try dictation.
class DictationPage : public Page {
    Q_DECLARE_TR_FUNCTIONS(DictationPage)

public:
    explicit DictationPage(const WindowServices& services);
};

}  // namespace quorvi
