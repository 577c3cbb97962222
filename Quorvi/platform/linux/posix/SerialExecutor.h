#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "QuorviCore/async/Executor.h"

namespace quorvi {

// One worker thread with a queue. The destructor runs what is queued, then ends the thread.
class SerialExecutor : public Executor {
public:
    // `name` is shown by debuggers; at most 15 bytes.
    explicit SerialExecutor(const std::string& name);
    ~SerialExecutor() override;

    void run(std::function<void()> job) override;

    // While a Hold lives, what is queued waits: for what can do without a processor until something
    // that is waited for is done. On any thread; the executor outlives it.
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

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> jobs_;
    bool ending_ = false;
    int holds_ = 0;
    std::thread thread_;
};

}  // namespace quorvi
