#pragma once

#include <string>

namespace quorvi {

// Returns the locale of the environment, such as "el_GR"; US English, the language of the
// interface, for the POSIX locale.
std::string systemLocale();

}  // namespace quorvi
