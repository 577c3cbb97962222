#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace quorvi {

// Exports and imports the user's data; needs no desktop.
//     export FILE   writes dictations, rules and settings as one JSON document; Quorvi may be
//                   running
//     import FILE   merges such a document, the later version of each value wins; refused while
//                   Quorvi is running
// Shows progress on a terminal. An interrupt (Ctrl+C) changes nothing.
// Returns the exit status: 0; 1 with a message on failure; 2 for an invalid command line; 130 after
// an interrupt. Returns nullopt if the arguments are neither command.
std::optional<int> runTransferCommand(const std::vector<std::string_view>& arguments);

}  // namespace quorvi
