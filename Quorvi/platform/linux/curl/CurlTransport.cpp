#include "Quorvi/platform/linux/curl/CurlTransport.h"

#include <pthread.h>

#include <climits>
#include <exception>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/curl/CurlLibrary.h"
#include "Quorvi/platform/linux/curl/CurlTransfer.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

CURLM* newMulti() {
    CURLM* multi = curl().multi_init();
    if (!multi) throw QuorviError::message(say::noMemoryForServer(Sentence::speechService));
    // After a change of network an idle connection is dead without notice, and a request on it
    // would wait for its time-out. The one that is kept is tried by openConnection().
    curl().multi_setopt(multi, CURLMOPT_MAXCONNECTS, 1L);
    return multi;
}

// Requests to the transport's thread. Outlives the thread, because some requests'
// coroutine frames are destroyed after the transport.
class Inbox {
public:
    // From now on the thread waits in `multi`.
    void open(CURLM* multi) {
        std::lock_guard lock(mutex_);
        multi_ = multi;
    }
    void start(std::unique_ptr<CurlTransfer> transfer) {
        std::lock_guard lock(mutex_);
        if (refusal_) return transfer->abandon(refusal_);
        starting_.push_back(std::move(transfer));
        wake();
    }
    void cancel(std::uint64_t id) {
        std::lock_guard lock(mutex_);
        if (refusal_) return;
        cancelled_.push_back(id);
        wake();
    }
    // For good: the thread ends, and what comes later is abandoned.
    void close(std::exception_ptr reason) {
        std::lock_guard lock(mutex_);
        refusal_ = std::move(reason);
        wake();
        multi_ = nullptr;
    }

    // Returns why the thread should end, or null.
    std::exception_ptr take(std::vector<std::unique_ptr<CurlTransfer>>& starting,
                            std::vector<std::uint64_t>& cancelled) {
        std::lock_guard lock(mutex_);
        starting.swap(starting_);
        cancelled.swap(cancelled_);
        return refusal_;
    }

private:
    void wake() {
        if (multi_) curl().multi_wakeup(multi_);
    }

    std::mutex mutex_;            // held for a few instructions only
    CURLM* multi_ = nullptr;      // while open
    std::exception_ptr refusal_;  // once closed
    std::vector<std::unique_ptr<CurlTransfer>> starting_;
    std::vector<std::uint64_t> cancelled_;
};

// Ends a transfer at once on a stop, from any thread, and when its coroutine's frame dies.
class CancelOnExit {
public:
    CancelOnExit(std::shared_ptr<Inbox> inbox, std::uint64_t id, std::stop_token stop)
        : cancel_{std::move(inbox), id}, onStop_(std::move(stop), cancel_) {}
    ~CancelOnExit() { cancel_(); }
    CancelOnExit(const CancelOnExit&) = delete;
    CancelOnExit& operator=(const CancelOnExit&) = delete;

private:
    struct Cancel {
        std::shared_ptr<Inbox> inbox;
        std::uint64_t id;
        void operator()() const { inbox->cancel(id); }
    };
    Cancel cancel_;
    std::stop_callback<Cancel> onStop_;
};

// Scheme, host and port of a URL.
std::string authority(const std::string& url) {
    const auto host = url.find("//");
    return url.substr(0, url.find_first_of("/?#", host == url.npos ? 0 : host + 2));
}

}  // namespace

// The thread and everything that only it touches.
class CurlTransport::Worker {
public:
    explicit Worker(std::string caFile) : caFile_(std::move(caFile)), thread_([this] { run(); }) {
        pthread_setname_np(thread_.native_handle(), "quorvi-http");
    }
    ~Worker() {
        inbox_->close(std::make_exception_ptr(Cancelled{}));
        thread_.join();
    }

    const std::shared_ptr<Inbox>& inbox() const { return inbox_; }
    std::uint64_t nextId() { return ++lastId_; }  // main thread

private:
    struct Cleanup {
        void operator()(CURLM* multi) const { curl().multi_cleanup(multi); }
    };

    void run();
    void start(std::unique_ptr<CurlTransfer> transfer);
    void collectFinished();
    std::unique_ptr<CurlTransfer> remove(std::uint64_t id);
    bool isOpening(const std::string& host) const;

    std::uint64_t lastId_ = 0;
    const std::string caFile_;
    std::unique_ptr<CURLM, Cleanup> multi_;
    const std::shared_ptr<Inbox> inbox_ = std::make_shared<Inbox>();
    std::map<std::uint64_t, std::unique_ptr<CurlTransfer>> running_;
    std::thread thread_;
};

void CurlTransport::Worker::run() {
    std::vector<std::unique_ptr<CurlTransfer>> starting;
    std::vector<std::uint64_t> cancelled;
    try {
        multi_.reset(newMulti());
        inbox_->open(multi_.get());
    } catch (const std::exception&) {
        inbox_->close(std::current_exception());
    }
    std::exception_ptr ending;
    while (!(ending = inbox_->take(starting, cancelled))) {
        for (auto& transfer : starting) start(std::move(transfer));
        for (const auto id : cancelled) remove(id);
        starting.clear();
        cancelled.clear();
        int active = 0;
        curl().multi_perform(multi_.get(), &active);
        collectFinished();
        // Sleeps until a socket, one of libcurl's own deadlines or the inbox has something to do.
        curl().multi_poll(multi_.get(), nullptr, 0, INT_MAX, nullptr);
    }
    for (auto& transfer : starting) transfer->abandon(ending);
    while (!running_.empty()) remove(running_.begin()->first)->abandon(ending);
    multi_.reset();
}

void CurlTransport::Worker::start(std::unique_ptr<CurlTransfer> transfer) {
    if (transfer->opensConnection() && isOpening(authority(transfer->url()))) return;
    if (!transfer->prepare(caFile_) ||
        curl().multi_add_handle(multi_.get(), transfer->handle()) != CURLM_OK) {
        transfer->abandon(std::make_exception_ptr(QuorviError::message(say::requestNotMade())));
        return;
    }
    const auto id = transfer->id();
    running_.emplace(id, std::move(transfer));
}

void CurlTransport::Worker::collectFinished() {
    int left = 0;
    while (const CURLMsg* message = curl().multi_info_read(multi_.get(), &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        const auto result = message->data.result;
        CurlTransfer* transfer = nullptr;
        curl().easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
        const auto finished = remove(transfer->id());
        finished->finish(result);
    }
}

std::unique_ptr<CurlTransfer> CurlTransport::Worker::remove(std::uint64_t id) {
    const auto found = running_.find(id);
    if (found == running_.end()) return nullptr;
    auto transfer = std::move(found->second);
    running_.erase(found);
    curl().multi_remove_handle(multi_.get(), transfer->handle());
    return transfer;
}

bool CurlTransport::Worker::isOpening(const std::string& host) const {
    for (const auto& [id, transfer] : running_)
        if (transfer->opensConnection() && authority(transfer->url()) == host) return true;
    return false;
}

CurlTransport::CurlTransport(Scheduler& scheduler, std::string caFile)
    : scheduler_(scheduler), caFile_(std::move(caFile)) {}

CurlTransport::~CurlTransport() = default;

CurlTransport::Worker& CurlTransport::worker() {
    if (!worker_) worker_ = std::make_unique<Worker>(caFile_);
    return *worker_;
}

Task<HttpResponse> CurlTransport::send(HttpRequest request, std::stop_token stop) {
    Promise<HttpResponse> promise(scheduler_);
    const auto id = worker().nextId();
    // From here on the request is wiped, whatever happens.
    auto transfer = std::make_unique<CurlTransfer>(id, std::move(request), promise);
    throwIfStopped(stop);
    auto future = promise.future(stop);
    const auto inbox = worker().inbox();
    inbox->start(std::move(transfer));
    CancelOnExit cancel(inbox, id, stop);
    co_return co_await future;
}

// libcurl keeps a connection for later transfers only after a request: one that was opened with
// CONNECT_ONLY is never reused, one whose transfer is stopped before its request is closed.
void CurlTransport::openConnection(std::string url) {
    HttpRequest head;
    head.method = "HEAD";
    head.url = std::move(url);
    // A connection that takes longer does not help the request that follows.
    head.timeout = std::chrono::seconds(10);
    worker().inbox()->start(
        std::make_unique<CurlTransfer>(worker().nextId(), std::move(head), std::nullopt));
}

}  // namespace quorvi
