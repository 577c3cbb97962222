#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvi {

// Returns the transcript in the body of the speech service's answer: the member "text" of a JSON
// object. A NUL or a lone surrogate in it becomes U+FFFD, so the result is well-formed. Returns
// nullopt if the body is malformed, nested deeper than greatestDepth, or has no such text. The size
// of the body is the caller's to bound.
std::optional<std::string> transcriptIn(std::string_view body);

}  // namespace quorvi
