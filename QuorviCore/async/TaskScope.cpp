#include "QuorviCore/async/TaskScope.h"

#include <exception>

namespace quorvi {

namespace {

// Ends the wrapped task quietly on cancellation and removes its frame in a later turn, when no
// code of the frame is on the stack any more.
Task<void> supervise(Scheduler& scheduler, Task<void> task, std::function<void()> remove) {
    try {
        co_await task;
    } catch (const Cancelled&) {
    } catch (...) {
        std::terminate();
    }
    scheduler.post(std::move(remove));
}

}  // namespace

TaskScope::TaskScope(Scheduler& scheduler)
    : scheduler_(scheduler), running_(std::make_shared<std::list<Running>>()) {}

TaskScope::~TaskScope() {
    cancelAll();
    running_->clear();
}

TaskHandle TaskScope::start(const std::function<Task<void>(std::stop_token)>& make) {
    const std::uint64_t id = ++nextId_;
    std::stop_source stop;
    std::weak_ptr<std::list<Running>> running = running_;
    auto remove = [running, id] {
        if (auto list = running.lock())
            list->remove_if([id](const Running& r) { return r.id == id; });
    };
    auto task = supervise(scheduler_, make(stop.get_token()), std::move(remove));
    running_->push_back({id, stop, std::move(task)});
    running_->back().task.start();
    return TaskHandle(stop);
}

void TaskScope::cancelAll() {
    for (auto& running : *running_) running.stop.request_stop();
}

}  // namespace quorvi
