#include "Quorvi/platform/linux/posix/SerialExecutor.h"

#include <pthread.h>

#include <utility>

namespace quorvi {

SerialExecutor::~SerialExecutor() {
    {
        std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_.notify_one();
    if (thread_.joinable()) thread_.join();
}

void SerialExecutor::run(std::function<void()> job) {
    {
        std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
        if (!thread_.joinable()) {
            thread_ = std::thread([this] { work(); });
            pthread_setname_np(thread_.native_handle(), name_.c_str());
        }
    }
    wake_.notify_one();
}

void SerialExecutor::hold(int change) {
    {
        std::lock_guard lock(mutex_);
        holds_ += change;
    }
    wake_.notify_one();
}

void SerialExecutor::work() {
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return ending_ || (!jobs_.empty() && holds_ == 0); });
            if (jobs_.empty()) return;
            job = std::move(jobs_.front());
            jobs_.pop_front();
        }
        job();
    }
}

}  // namespace quorvi
