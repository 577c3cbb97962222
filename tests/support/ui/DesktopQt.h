#pragma once

#include <functional>

namespace quorvi::test {

// Creates Qt's application on the desktop's display, in US English; at the first call only. It
// lives as long as the process.
void startDesktopQt();

// Runs Qt's event loop until the condition holds; see eventually().
bool inQtLoop(const std::function<bool()>& condition);

}  // namespace quorvi::test
