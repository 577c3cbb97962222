#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace quorvi {

// The computers that share the configured folder:
//     computers                  lists them
//     computers remove COMPUTER  removes one that is gone for good, with its files
// Returns the exit status, or nullopt for another command. Needs no desktop.
std::optional<int> runComputersCommand(const std::vector<std::string_view>& arguments);

}  // namespace quorvi
