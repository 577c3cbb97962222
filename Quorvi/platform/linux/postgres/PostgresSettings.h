#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <stop_token>

#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/base/Secret.h"

namespace quorvi {

// Returns the password of an account; nullopt to let libpq look in its usual files. Called on the
// thread of the database before each connection; may block, and returns when stopped.
using PostgresPassword = std::function<std::optional<Secret>(std::stop_token)>;

// Timeouts and intervals.
struct PostgresTimes {
    Duration connect = std::chrono::seconds(10);
    // Without progress in either direction while an answer is due.
    Duration response = std::chrono::seconds(30);
    // How long an unused connection is kept.
    Duration idle = std::chrono::seconds(60);
    // Between polls, if the server sends no notifications.
    Duration poll = std::chrono::seconds(5);
    // Before a lost subscription is retried; doubled each time.
    Duration firstRetry = std::chrono::seconds(1);
    Duration lastRetry = std::chrono::seconds(60);
};

}  // namespace quorvi
