#pragma once

#include <string>

namespace quorvi {

// A new random (version 4) UUID in its canonical form: 36 characters, upper-case hexadecimal
// digits with hyphens. Thread-safe.
std::string newUuid();

// Whether the text is a UUID in that form.
bool isUuid(const std::string& s);

}  // namespace quorvi
