#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "QuorviCore/async/Executor.h"

namespace quorvi {

// A worker thread with a queue, which begins with the first job. The destructor runs the queued
// jobs, then ends the thread.
class SerialExecutor : public Executor {
public:
    // `name` is shown by debuggers; at most 15 bytes.
    explicit SerialExecutor(std::string name) : name_(std::move(name)) {}
    ~SerialExecutor() override;

    void run(std::function<void()> job) override;

    // Pauses the queue while it lives, so that background work does not compete with start-up. Any
    // thread; the executor outlives it.
    class Hold {
    public:
        explicit Hold(SerialExecutor& executor) : executor_(&executor) { executor.hold(1); }
        ~Hold() { release(); }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
        void release() {
            if (auto* executor = std::exchange(executor_, nullptr)) executor->hold(-1);
        }

    private:
        SerialExecutor* executor_;
    };

private:
    void work();
    void hold(int change);

    const std::string name_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> jobs_;
    bool ending_ = false;
    int holds_ = 0;
    std::thread thread_;
};

}  // namespace quorvi
