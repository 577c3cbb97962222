#pragma once

#include <string>
#include <string_view>

namespace quorvi::text {

// Transliterates to Latin script: Greek, Cyrillic and other letters become their usual Latin
// equivalents. Returns the text unchanged if the system has no such rules. Thread-safe. The first
// text in another script loads the rules, which takes about 25 ms.
std::string toLatin(std::string_view s);

}  // namespace quorvi::text
