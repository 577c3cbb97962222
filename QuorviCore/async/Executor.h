#pragma once

#include <functional>

namespace quorvi {

// Runs blocking work away from the main thread. One executor runs its jobs one at a time in the
// order given, so two jobs of one subject never overlap. run() is thread-safe. Destroying an
// executor finishes the jobs that were queued.
class Executor {
public:
    virtual ~Executor() = default;
    virtual void run(std::function<void()> job) = 0;
};

}  // namespace quorvi
