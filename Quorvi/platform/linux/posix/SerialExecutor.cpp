#include "Quorvi/platform/linux/posix/SerialExecutor.h"

#include <pthread.h>
#include <time.h>

#include <atomic>
#include <chrono>
#include <utility>

#include "QuorviCore/base/ColdMemory.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// After so much work at a stretch, in processor time, memory is given back; but not while one job
// follows another. The regular passes do less.
constexpr double muchWork = 0.005;
constexpr auto rest = 1s;
std::atomic<bool> isToGiveBack = false;

double processorSeconds() {
    timespec used{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

}  // namespace

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
    const auto hasToDo = [this] { return ending_ || (!jobs_.empty() && holds_ == 0); };
    double counted = 0;
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock(mutex_);
            if (afterwards_ == Afterwards::giveMemoryBack && !hasToDo()) {
                const double now = processorSeconds();
                if (now - std::exchange(counted, now) > muchWork) isToGiveBack = true;
                const bool isIdle = isToGiveBack && !wake_.wait_for(lock, rest, hasToDo);
                if (isIdle && isToGiveBack.exchange(false)) {
                    lock.unlock();
                    ColdMemory::giveBack();
                    counted = processorSeconds();
                    lock.lock();
                }
            }
            wake_.wait(lock, hasToDo);
            if (jobs_.empty()) return;
            job = std::move(jobs_.front());
            jobs_.pop_front();
        }
        job();
    }
}

}  // namespace quorvi
