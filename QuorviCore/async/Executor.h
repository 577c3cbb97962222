#pragma once

#include <functional>

namespace quorvi {

// Runs blocking work off the main thread, one job at a time in the order queued, so jobs of one
// executor never overlap. run() is thread-safe. Destroying an executor runs the queued jobs
// first.
class Executor {
public:
    virtual ~Executor() = default;
    virtual void run(std::function<void()> job) = 0;
};

}  // namespace quorvi
