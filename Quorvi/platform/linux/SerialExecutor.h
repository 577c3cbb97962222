#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

#include "QuorviCore/async/Executor.h"

namespace quorvi {

// One worker thread with a queue. The destructor runs what is queued, then ends the thread.
class SerialExecutor : public Executor {
public:
    // `name` is shown by debuggers; at most 15 bytes.
    explicit SerialExecutor(const std::string& name);
    ~SerialExecutor() override;

    void run(std::function<void()> job) override;

private:
    void work();

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> jobs_;
    bool ending_ = false;
    std::thread thread_;
};

}  // namespace quorvi
