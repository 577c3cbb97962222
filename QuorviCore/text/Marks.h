#pragma once

#include <string>
#include <string_view>

namespace quorvi::text {

// Returns the text without the marks that follow thirty others on one letter, more than any
// language has: the work of normalising such a text grows with the square of their number.
std::string withoutExcessMarks(std::string_view s);

}  // namespace quorvi::text
