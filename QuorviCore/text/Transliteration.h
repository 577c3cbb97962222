#pragma once

#include <string>
#include <string_view>

namespace quorvi::text {

// The text in Latin script: Greek, Cyrillic and other letters become their usual Latin
// equivalents. The text itself when the system has no such rules. Thread-safe. The rules are loaded
// at the first text that holds another script, which takes some 25 ms.
std::string toLatin(std::string_view s);

}  // namespace quorvi::text
