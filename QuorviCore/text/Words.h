#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvi::text {

// The pieces between runs of white space (Unicode White_Space), without empty ones.
std::vector<std::string_view> words(std::string_view s);

// Those pieces with one ASCII space between them.
std::string withSingleSpaces(std::string_view s);

}  // namespace quorvi::text
