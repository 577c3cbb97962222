#include "Quorvi/platform/linux/clipboard/ThreadedPasteboard.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <deque>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "Quorvi/platform/linux/clipboard/TextItem.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Future.h"

namespace quorvi {

namespace {

std::exception_ptr unavailable() {
    return std::make_exception_ptr(QuorviError::message(say::clipboardUnavailable()));
}

}  // namespace

// The clipboard's thread and its queue of operations.
class ThreadedPasteboard::Worker {
public:
    struct Job {
        std::function<void(ClipboardSession&)> run;
        std::function<void()> fail;  // instead of, or after a failed, run
    };

    Worker(Connect connect, std::atomic<std::int64_t>& changeCount,
           std::function<void(PasteboardRead)> onRead)
        : connect_(std::move(connect)),
          changeCount_(changeCount),
          wakeFd_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
          given_{wakeFd_, changeCount, std::move(onRead)} {
        if (wakeFd_ < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
        thread_ = std::thread([this] { work(); });
        pthread_setname_np(thread_.native_handle(), "clipboard");
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() {
        ending_ = true;
        wake();
        thread_.join();
        close(wakeFd_);
    }

    void enqueue(Job job) {
        {
            std::lock_guard lock(mutex_);
            jobs_.push_back(std::move(job));
        }
        wake();
    }

    void wake() const {
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = ::write(wakeFd_, &one, sizeof one);
    }
    bool isEnding() const { return ending_; }

private:
    void work();
    bool connect();
    void perform(const Job& job);
    void idle();
    std::optional<Job> next();

    const Connect connect_;
    std::atomic<std::int64_t>& changeCount_;
    const int wakeFd_;
    const Thread given_;
    std::atomic<bool> ending_{false};
    std::mutex mutex_;
    std::deque<Job> jobs_;
    std::unique_ptr<ClipboardSession> session_;  // the thread's own, null without a server
    bool wasConnected_ = false;
    std::thread thread_;
};

void ThreadedPasteboard::Worker::work() {
    connect();
    while (!ending_) {
        if (const auto job = next())
            perform(*job);
        else
            idle();
    }
    while (const auto job = next()) job->fail();
    session_.reset();
}

std::optional<ThreadedPasteboard::Worker::Job> ThreadedPasteboard::Worker::next() {
    std::lock_guard lock(mutex_);
    if (jobs_.empty()) return std::nullopt;
    auto job = std::move(jobs_.front());
    jobs_.pop_front();
    return job;
}

bool ThreadedPasteboard::Worker::connect() {
    if (session_) return true;
    try {
        session_ = connect_(given_);
    } catch (const ClipboardConnectionLost&) {
        return false;
    }
    if (std::exchange(wasConnected_, true)) ++changeCount_;
    return true;
}

void ThreadedPasteboard::Worker::perform(const Job& job) {
    if (!connect()) return job.fail();
    try {
        job.run(*session_);
    } catch (const ClipboardConnectionLost&) {
        session_.reset();
        job.fail();
    }
}

void ThreadedPasteboard::Worker::idle() {
    if (session_) {
        try {
            session_->wait();
        } catch (const ClipboardConnectionLost&) {
            session_.reset();  // the wait may have swallowed a wake-up: look at the queue again
        }
        return;
    }
    pollfd woken{wakeFd_, POLLIN, 0};
    poll(&woken, 1, -1);
    std::uint64_t wakes = 0;
    [[maybe_unused]] const auto got = ::read(wakeFd_, &wakes, sizeof wakes);
}

ThreadedPasteboard::ThreadedPasteboard(Scheduler& scheduler, Connect connect)
    : scheduler_(scheduler),
      worker_(std::make_unique<Worker>(
          std::move(connect), changeCount_,
          [&scheduler, weak = std::weak_ptr(readObserver_)](PasteboardRead read) {
              scheduler.post([weak, read] {
                  const auto observer = weak.lock();
                  if (observer && *observer) (*observer)(read);
              });
          })) {}

ThreadedPasteboard::~ThreadedPasteboard() = default;

Task<std::vector<PasteboardItem>> ThreadedPasteboard::read(std::stop_token stop) {
    Promise<std::vector<PasteboardItem>> promise(scheduler_);
    auto future = promise.future(stop);
    auto& worker = *worker_;
    auto run = [promise, stop, &worker](ClipboardSession& session) mutable {
        // A wait for an owner ends with the caller's interest in it.
        const std::stop_callback wakeUp(stop, [&worker] { worker.wake(); });
        try {
            const auto items =
                session.read([&] { return stop.stop_requested() || worker.isEnding(); });
            promise.resolve(items);
            session.prepareKeeper(items);
        } catch (const ClipboardOwnerSilent&) {
            promise.reject(unavailable());
        } catch (const Cancelled&) {
            // The reader's stop reaches this thread before its future, or the thread is ending.
            promise.reject(stop.stop_requested() ? std::make_exception_ptr(Cancelled{})
                                                 : unavailable());
        }
    };
    worker.enqueue({std::move(run), [promise]() mutable { promise.reject(unavailable()); }});
    co_return co_await future;
}

void ThreadedPasteboard::observeReads(std::function<void(PasteboardRead)> observer) {
    *readObserver_ = std::move(observer);
}

Task<bool> ThreadedPasteboard::isOffering() {
    return ask(&ClipboardSession::isOffering);
}

Task<bool> ThreadedPasteboard::handOver() {
    return ask(&ClipboardSession::handOver);
}

Task<bool> ThreadedPasteboard::ask(bool (ClipboardSession::*question)()) {
    Promise<bool> promise(scheduler_);
    auto future = promise.future();
    worker_->enqueue({[promise, question](ClipboardSession& session) mutable {
                          promise.resolve((session.*question)());
                      },
                      [promise]() mutable { promise.resolve(false); }});
    co_return co_await future;
}

Task<std::optional<std::int64_t>> ThreadedPasteboard::write(std::vector<PasteboardItem> items,
                                                            std::vector<PasteboardItem> afterwards,
                                                            std::optional<std::int64_t> expected) {
    Promise<std::optional<std::int64_t>> promise(scheduler_);
    auto future = promise.future();
    auto run = [promise, items = std::move(items), afterwards = std::move(afterwards),
                expected](ClipboardSession& session) mutable {
        promise.resolve(session.write(items, afterwards, expected));
    };
    worker_->enqueue({std::move(run), [promise]() mutable { promise.resolve(std::nullopt); }});
    co_return co_await future;
}

Task<std::optional<std::int64_t>> ThreadedPasteboard::write(std::vector<PasteboardItem> items) {
    return write(items, items, std::nullopt);
}

Task<std::optional<std::int64_t>> ThreadedPasteboard::writeText(
    std::string text, TranscriptVisibility visibility, std::vector<PasteboardItem> former,
    std::optional<std::int64_t> expected) {
    std::vector<PasteboardItem> items{clipboardTextItem(text, visibility)};
    if (visibility == TranscriptVisibility::everywhere) former = items;
    return write(std::move(items), std::move(former), expected);
}

void ThreadedPasteboard::restore(std::int64_t expected, std::vector<PasteboardItem> items) {
    auto run = [expected, items = std::move(items)](ClipboardSession& session) {
        session.restore(expected, items);
    };
    worker_->enqueue({std::move(run), [] {}});
}

}  // namespace quorvi
