#include "Quorvi/platform/linux/curl/CurlDownloader.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <memory>
#include <span>
#include <system_error>
#include <utility>

#include "Quorvi/platform/linux/curl/CurlDownload.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

namespace fs = std::filesystem;

QuorviError saveFailure(int error) {
    return QuorviError::message(say::updateNotSaved(std::generic_category().message(error)));
}

// A file that is removed unless it was completed.
class NewFile {
public:
    NewFile(fs::path path, std::uint64_t length)
        : path_(std::move(path)),
          descriptor_(::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                             S_IRUSR | S_IWUSR)),
          length_(length) {
        if (descriptor_ < 0) throw saveFailure(errno);
    }
    ~NewFile() {
        ::close(descriptor_);
        if (!complete_) ::unlink(path_.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void append(std::span<const char> bytes) {
        if (bytes.size() > length_ - written_) throw QuorviError::message(say::updateTooLarge());
        while (!bytes.empty()) {
            const auto count = ::write(descriptor_, bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) throw saveFailure(errno);
            bytes = bytes.subspan(static_cast<std::size_t>(count));
            written_ += static_cast<std::uint64_t>(count);
        }
    }
    void finish() {
        if (written_ != length_) throw QuorviError::message(say::updateTooSmall());
        complete_ = true;
    }
    std::uint64_t written() const { return written_; }

private:
    fs::path path_;
    int descriptor_;
    std::uint64_t length_;
    std::uint64_t written_ = 0;
    bool complete_ = false;
};

// Ends a job when its coroutine is stopped, or its frame dies.
class StopOnExit {
public:
    explicit StopOnExit(std::stop_token stop) : onStop_(std::move(stop), Request{source_}) {}
    ~StopOnExit() { source_.request_stop(); }
    StopOnExit(const StopOnExit&) = delete;
    StopOnExit& operator=(const StopOnExit&) = delete;
    std::stop_token token() const { return source_.get_token(); }

private:
    struct Request {
        std::stop_source source;
        void operator()() { source.request_stop(); }
    };
    std::stop_source source_;
    std::stop_callback<Request> onStop_;
};

using Progress = std::function<void(std::uint64_t)>;

// Posts the count to the main thread, which gets the latest one when it is idle, and
// nothing after the coroutine is destroyed.
class Report {
public:
    Report(Scheduler& scheduler, const std::shared_ptr<Progress>& progress)
        : scheduler_(scheduler), told_(std::make_shared<Told>()) {
        told_->progress = progress;
    }
    void operator()(std::uint64_t bytes) {
        told_->bytes = bytes;
        if (told_->isPosted.exchange(true)) return;
        scheduler_.post([told = told_] {
            told->isPosted = false;
            if (const auto tell = told->progress.lock()) (*tell)(told->bytes);
        });
    }

private:
    struct Told {
        std::weak_ptr<Progress> progress;
        std::atomic<std::uint64_t> bytes{0};
        std::atomic<bool> isPosted{false};
    };
    Scheduler& scheduler_;
    std::shared_ptr<Told> told_;
};

}  // namespace

CurlDownloader::CurlDownloader(Scheduler& scheduler, std::string caFile)
    : scheduler_(scheduler), caFile_(std::move(caFile)) {}

CurlDownloader::~CurlDownloader() {
    ending_.request_stop();
}

// Neither operation gives its token to the future: it ends with its job, so that a file that was
// begun is gone when Cancelled is thrown.
Task<Bytes> CurlDownloader::fetch(std::string url, std::size_t limit, std::stop_token stop) {
    throwIfStopped(stop);
    const StopOnExit job(std::move(stop));
    auto work = [url, limit, caFile = caFile_, stopped = job.token(),
                 ending = ending_.get_token()] {
        Bytes body;
        CurlDownload download(url, caFile, [&](std::span<const char> bytes) {
            if (bytes.size() > limit - body.size())
                throw QuorviError::message(say::updateAnswerTooLarge());
            body.insert(body.end(), bytes.begin(), bytes.end());
        });
        download.run(stopped, ending);
        return body;
    };
    auto running = inBackground(worker_, scheduler_, std::move(work));
    co_return co_await running;
}

Task<void> CurlDownloader::download(std::string url, std::filesystem::path file,
                                    std::uint64_t length, Progress progress, std::stop_token stop) {
    throwIfStopped(stop);
    const StopOnExit job(std::move(stop));
    const auto told = std::make_shared<Progress>(std::move(progress));
    auto work = [url, file, length, caFile = caFile_, report = Report(scheduler_, told),
                 stopped = job.token(), ending = ending_.get_token()]() mutable {
        NewFile saved(file, length);
        CurlDownload download(url, caFile, [&](std::span<const char> bytes) {
            saved.append(bytes);
            report(saved.written());
        });
        download.run(stopped, ending);
        saved.finish();
    };
    auto running = inBackground(worker_, scheduler_, std::move(work));
    co_await running;
}

}  // namespace quorvi
