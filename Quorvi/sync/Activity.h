#pragma once

#include <stop_token>
#include <utility>
#include <vector>

#include "QuorviCore/async/Future.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// Work that runs at most once at a time, and whose end can be awaited. Main thread; outlives the
// coroutines that wait for it.
class Activity {
public:
    explicit Activity(Scheduler& scheduler) : scheduler_(scheduler) {}
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;

    bool isActive() const { return active_; }

    // Makes the activity active while it lives.
    class Running {
    public:
        explicit Running(Activity& activity) : activity_(activity) { activity_.active_ = true; }
        ~Running() { activity_.end(); }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

    private:
        Activity& activity_;
    };

    // Resumes when it is no longer active; at once if it is not.
    Task<void> ended(std::stop_token stop) {
        while (active_) {
            waiting_.emplace_back(scheduler_);
            auto end = waiting_.back().future(stop);
            co_await end;
        }
    }

private:
    void end() {
        active_ = false;
        for (auto& promise : std::exchange(waiting_, {})) promise.resolve();
    }

    Scheduler& scheduler_;
    bool active_ = false;
    std::vector<Promise<void>> waiting_;
};

}  // namespace quorvi
