#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// Checks that this build can reach the user's database: writes a record into a new zone, reads it
// back and removes both.
class CloudReleaseCheck {
public:
    // Returns false if no account is signed in. Throws the first error, and Cancelled, after it has
    // removed what it wrote.
    static Task<bool> tryOut(CloudDatabase& database, std::stop_token stop = {});

    // Prints one line and returns the exit status: 0 on success, 2 if no account is signed in,
    // 1 otherwise. Throws only Cancelled.
    static Task<std::int32_t> run(CloudDatabase& database,
                                  std::function<void(const std::string&)> print,
                                  std::stop_token stop = {});
};

}  // namespace quorvi
