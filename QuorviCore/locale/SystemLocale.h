#pragma once

#include <string>

namespace quorvi {

// The user's locale, such as "el_GR", as the process's environment names it. The plain POSIX locale
// stands for US English, the language of the interface.
std::string systemLocale();

}  // namespace quorvi
