#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// Proves that this build reaches the user's database: writes a record into a zone of its own, reads
// it back and removes both. Touches nothing else.
class CloudReleaseCheck {
public:
    // Prints one line, and returns the exit status: 0 when all went well, 2 when no account is
    // signed in, else 1. Throws Cancelled only.
    static Task<std::int32_t> run(CloudDatabase& database,
                                  std::function<void(const std::string&)> print,
                                  std::stop_token stop = {});
};

}  // namespace quorvi
