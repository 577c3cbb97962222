#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvi::text {

// Splits the text at runs of white space (Unicode White_Space), without empty pieces.
std::vector<std::string_view> words(std::string_view s);

// Joins the words with one ASCII space.
std::string withSingleSpaces(std::string_view s);

}  // namespace quorvi::text
