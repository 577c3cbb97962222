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
    // What happens when the queue has been empty for a while: those whose jobs read or free whole
    // histories give memory back to the system.
    enum class Afterwards { nothing, giveMemoryBack };

    // `name` is shown by debuggers; at most 15 bytes.
    explicit SerialExecutor(std::string name, Afterwards afterwards = Afterwards::nothing)
        : name_(std::move(name)), afterwards_(afterwards) {}
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
    const Afterwards afterwards_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> jobs_;
    bool ending_ = false;
    int holds_ = 0;
    std::thread thread_;
};

}  // namespace quorvi
