#pragma once

#include "QuorviCore/base/Secret.h"

namespace quorvi {

// The first line of the standard input. A terminal is asked with `prompt`, and does not show what
// is typed.
Secret readSecret(const char* prompt);

}  // namespace quorvi
