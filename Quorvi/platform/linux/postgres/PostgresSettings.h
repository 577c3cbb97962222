#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <stop_token>

#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/base/Secret.h"

namespace quorvi {

// Gives the password of an account. Asked on the database's thread before each connection; may
// wait, and gives up on the stop. Nothing means that libpq looks in its usual files.
using PostgresPassword = std::function<std::optional<Secret>(std::stop_token)>;

// How long what may take.
struct PostgresTimes {
    Duration connect = std::chrono::seconds(10);
    // Without a byte going either way while an answer is due.
    Duration response = std::chrono::seconds(30);
    // A connection that nobody needs is kept this long.
    Duration idle = std::chrono::seconds(60);
    // Between two questions for changes where the server announces none.
    Duration poll = std::chrono::seconds(5);
    // Until a lost subscription is tried again; twice as long each time.
    Duration firstRetry = std::chrono::seconds(1);
    Duration lastRetry = std::chrono::seconds(60);
};

}  // namespace quorvi
