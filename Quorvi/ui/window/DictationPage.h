#pragma once

#include <QCoreApplication>

#include "Quorvi/ui/WindowServices.h"
#include "Quorvi/ui/design/Page.h"

namespace quorvi {

// Leads a new user through the setup, then shows how dictation stands, and offers a place to try
// it.
class DictationPage : public Page {
    Q_DECLARE_TR_FUNCTIONS(DictationPage)

public:
    explicit DictationPage(const WindowServices& services);
};

}  // namespace quorvi
