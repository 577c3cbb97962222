#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace quorvi {

// Removes all of the user's data on this machine, after a confirmation on the terminal.
//     erase [--yes]   refused while Quorvi is running; --yes is the confirmation
// Data in the cloud and on other machines stays; the command says so.
// Returns the exit status: 0; 1 with a message if it was not confirmed or something could not be
// removed; 2 for an invalid command line. Returns nullopt if the arguments are not this command.
std::optional<int> runEraseCommand(const std::vector<std::string_view>& arguments);

}  // namespace quorvi
