#pragma once

#include <string_view>

namespace quorvi {

// Whether the argument is a command for the running program: start, finish, toggle, cancel, status,
// show or quit.
bool isBusCommand(std::string_view argument);

// Sends the command to the running program; `show` starts it if it is installed. Returns the exit
// status: 0, or 1 if it isn't running or doesn't answer.
int runBusCommand(std::string_view command);

// Whether the program answers on the session bus.
bool isRunning();

}  // namespace quorvi
