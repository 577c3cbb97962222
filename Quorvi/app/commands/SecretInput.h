#pragma once

#include "QuorviCore/base/Secret.h"

namespace quorvi {

// Reads the first line of standard input. On a terminal, shows `prompt` and turns echo off.
Secret readSecret(const char* prompt);

}  // namespace quorvi
