#pragma once

#include "Quorvi/ui/WindowServices.h"

class QWidget;

namespace quorvi {

// The numbers under which the controller keeps the selected page.
namespace pageIndex {
inline constexpr int dictation = 0;
inline constexpr int settings = 1;
inline constexpr int history = 2;
inline constexpr int insights = 3;
}  // namespace pageIndex

QWidget* makePage(int index, const WindowServices& services);

}  // namespace quorvi
