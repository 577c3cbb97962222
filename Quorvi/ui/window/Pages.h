#pragma once

#include "Quorvi/ui/PageIndex.h"
#include "Quorvi/ui/WindowServices.h"

class QWidget;

namespace quorvi {

// Returns a new page; see PageIndex.h.
QWidget* makePage(int index, const WindowServices& services);

}  // namespace quorvi
