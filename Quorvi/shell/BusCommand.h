#pragma once

#include <string_view>

namespace quorvi {

// Whether the argument names something that the running program is asked for: start, finish,
// toggle, cancel, status, show or quit.
bool isBusCommand(std::string_view argument);

// Asks the running program; `show` starts it where the desktop knows how. Returns the exit status:
// 0, or 1 when it isn't running or doesn't answer.
int runBusCommand(std::string_view command);

// Whether the program answers on the session bus.
bool isRunning();

}  // namespace quorvi
