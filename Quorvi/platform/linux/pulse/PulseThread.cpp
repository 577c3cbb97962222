#include "Quorvi/platform/linux/pulse/PulseThread.h"

#include <pthread.h>
#include <pulse/mainloop-api.h>
#include <pulse/mainloop.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace quorvi {

namespace {

using Key = std::pair<TimePoint, std::uint64_t>;  // due time, then order of creation
using Timers = std::map<Key, std::function<void()>>;

struct TimerNode : Timer::Node {
    TimerNode(std::weak_ptr<Timers> t, Key k) : timers(std::move(t)), key(k) {}
    ~TimerNode() override {
        if (auto all = timers.lock()) all->erase(key);
    }
    std::weak_ptr<Timers> timers;
    Key key;
};

}  // namespace

struct PulseThread::Impl {
    std::mutex mutex;  // guards jobs and ending
    std::deque<std::function<void()>> jobs;
    bool ending = false;
    std::shared_ptr<Timers> timers = std::make_shared<Timers>();
    std::uint64_t lastTimer = 0;
    pa_mainloop* loop = pa_mainloop_new();
    // pa_mainloop_wakeup() is forgotten when it comes just before a poll is prepared; a descriptor
    // that the poll watches is not.
    int woken = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    pa_io_event* wakeEvent = nullptr;
    std::thread thread;

    Impl() {
        auto* api = pa_mainloop_get_api(loop);
        wakeEvent = api->io_new(api, woken, PA_IO_EVENT_INPUT, &Impl::awake, nullptr);
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() {
        pa_mainloop_get_api(loop)->io_free(wakeEvent);
        pa_mainloop_free(loop);
        ::close(woken);
    }

    void wake() const { eventfd_write(woken, 1); }

    static void awake(pa_mainloop_api*, pa_io_event*, int fd, pa_io_event_flags_t, void*) {
        eventfd_t count = 0;
        eventfd_read(fd, &count);
    }

    // Returns false when the thread should end and nothing is left to do.
    bool runJobs() {
        for (;;) {
            std::function<void()> job;
            {
                std::lock_guard lock(mutex);
                if (jobs.empty()) return !ending;
                job = std::move(jobs.front());
                jobs.pop_front();
            }
            job();
        }
    }

    // Runs the timers that are due; the microseconds until the next one, or -1.
    int runTimers() {
        for (;;) {
            if (timers->empty()) return -1;
            const auto first = timers->begin();
            const auto wait = first->first.first - std::chrono::steady_clock::now();
            if (wait > Duration::zero()) {
                const auto micro = std::chrono::ceil<std::chrono::microseconds>(wait).count();
                return static_cast<int>(std::min<std::int64_t>(micro, 1'000'000'000));
            }
            const auto work = std::move(first->second);
            timers->erase(first);
            work();
        }
    }

    void work() {
        while (runJobs()) {
            const int wait = runTimers();
            if (pa_mainloop_prepare(loop, wait) < 0) break;
            if (pa_mainloop_poll(loop) < 0) break;
            pa_mainloop_dispatch(loop);
        }
    }
};

PulseThread::PulseThread() : impl_(std::make_unique<Impl>()) {
    impl_->thread = std::thread([impl = impl_.get()] { impl->work(); });
    pthread_setname_np(impl_->thread.native_handle(), "sound");
}

PulseThread::~PulseThread() {
    end();
}

void PulseThread::end() {
    if (!impl_->thread.joinable()) return;
    {
        std::lock_guard lock(impl_->mutex);
        impl_->ending = true;
    }
    impl_->wake();
    impl_->thread.join();
}

void PulseThread::run(std::function<void()> job) {
    {
        std::lock_guard lock(impl_->mutex);
        impl_->jobs.push_back(std::move(job));
    }
    impl_->wake();
}

pa_mainloop_api* PulseThread::api() const {
    return pa_mainloop_get_api(impl_->loop);
}

Timer PulseThread::after(Duration delay, std::function<void()> work) {
    const Key key{std::chrono::steady_clock::now() + delay, ++impl_->lastTimer};
    impl_->timers->emplace(key, std::move(work));
    return Timer(std::make_unique<TimerNode>(impl_->timers, key));
}

}  // namespace quorvi
