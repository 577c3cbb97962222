#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace quorvi {

// Taking one's data along, from a command line, without a desktop's window.
//     export FILE   writes dictations, rules and settings as one JSON document; Quorvi may be
//                   running
//     import FILE   folds such a document in, later versions counting; only while none is running
// Progress is shown on a terminal. An interrupt (Ctrl+C) leaves everything as it was.
// The exit status: 0; 1 when it failed, with a sentence; 2 for a command line that makes no sense;
// 130 when it was interrupted. Nothing when the arguments are no such command.
std::optional<int> runTransferCommand(const std::vector<std::string_view>& arguments);

}  // namespace quorvi
