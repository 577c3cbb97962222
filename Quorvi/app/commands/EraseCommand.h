#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace quorvi {

// Removing all that Quorvi keeps of a user on this machine, after a confirmation on the terminal.
//     erase [--yes]   only while no Quorvi is running; --yes is the confirmation
// What the cloud and other machines hold stays, and it is said what that means.
// The exit status: 0; 1 when it was not confirmed or something could not be removed, with a
// sentence; 2 for a command line that makes no sense. Nothing when the arguments are no such
// command.
std::optional<int> runEraseCommand(const std::vector<std::string_view>& arguments);

}  // namespace quorvi
