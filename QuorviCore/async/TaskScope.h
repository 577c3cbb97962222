#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <stop_token>

#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// Cancels a started task. Copies share the task; a default-constructed handle has none. Cancelling
// is a request: the task ends at its next suspension point.
class TaskHandle {
public:
    TaskHandle() = default;
    explicit TaskHandle(std::stop_source stop) : stop_(std::move(stop)) {}

    void cancel() { stop_.request_stop(); }
    bool isCancelled() const { return stop_.stop_requested(); }

private:
    std::stop_source stop_{std::nostopstate};
};

// Owns the running tasks of one object and ends their frames with it. It must be its owner's last
// member, so that frames die before the fields they use. Main thread only.
class TaskScope {
public:
    explicit TaskScope(Scheduler& scheduler);
    ~TaskScope();
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    // Starts the task that `make` returns for its stop token, running it up to its first
    // suspension. Cancelled ends a task quietly; any other exception that escapes it terminates the
    // program, since its owner would not learn of the failure.
    TaskHandle start(const std::function<Task<void>(std::stop_token)>& make);

    // Requests a stop of every task.
    void cancelAll();

    bool isEmpty() const { return running_->empty(); }

private:
    struct Running {
        std::uint64_t id = 0;
        std::stop_source stop;
        Task<void> task;
    };

    Scheduler& scheduler_;
    std::uint64_t nextId_ = 0;
    std::shared_ptr<std::list<Running>> running_;  // shared with the posted removals
};

}  // namespace quorvi
