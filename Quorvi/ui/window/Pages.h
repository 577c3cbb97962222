#pragma once

#include "Quorvi/dictation/WindowPage.h"
#include "Quorvi/ui/WindowServices.h"

class QWidget;

namespace quorvi {

// Returns a new page.
QWidget* makePage(WindowPage page, const WindowServices& services);

}  // namespace quorvi
