#include "Quorvi/platform/linux/curl/CurlTransport.h"

#include <curl/curl.h>
#include <pthread.h>

#include <climits>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/curl/CurlSupport.h"
#include "Quorvi/platform/linux/curl/CurlTransfer.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

CURLM* newMulti() {
    CURLM* multi = newCurlMulti();
    if (!multi) throw QuorviError::message(say::noMemoryForServer(Sentence::speechService));
    // After a change of network an idle connection is dead without notice, and a request on it
    // would wait for its time-out. The one that is kept is tried by openConnection().
    curl_multi_setopt(multi, CURLMOPT_MAXCONNECTS, 1L);
    return multi;
}

// Requests to the transport's thread. Outlives the thread, because some requests'
// coroutine frames are destroyed after the transport.
class Inbox {
public:
    explicit Inbox(CURLM* multi) : multi_(multi) {}

    bool start(std::unique_ptr<CurlTransfer> transfer) {
        std::lock_guard lock(mutex_);
        if (!multi_) return false;
        starting_.push_back(std::move(transfer));
        curl_multi_wakeup(multi_);
        return true;
    }
    void cancel(std::uint64_t id) {
        std::lock_guard lock(mutex_);
        if (!multi_) return;
        cancelled_.push_back(id);
        curl_multi_wakeup(multi_);
    }
    void close() {
        std::lock_guard lock(mutex_);
        curl_multi_wakeup(std::exchange(multi_, nullptr));
    }

    // Returns false when the thread should end.
    bool take(std::vector<std::unique_ptr<CurlTransfer>>& starting,
              std::vector<std::uint64_t>& cancelled) {
        std::lock_guard lock(mutex_);
        starting.swap(starting_);
        cancelled.swap(cancelled_);
        return multi_ != nullptr;
    }

private:
    std::mutex mutex_;  // held for a few instructions only
    CURLM* multi_;      // null once closed
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
    explicit Worker(std::string caFile)
        : caFile_(std::move(caFile)),
          multi_(newMulti()),
          inbox_(std::make_shared<Inbox>(multi_)),
          thread_([this] { run(); }) {
        pthread_setname_np(thread_.native_handle(), "quorvi-http");
    }
    ~Worker() {
        inbox_->close();
        thread_.join();
        curl_multi_cleanup(multi_);
    }

    const std::shared_ptr<Inbox>& inbox() const { return inbox_; }
    std::uint64_t nextId() { return ++lastId_; }  // main thread

private:
    void run();
    void start(std::unique_ptr<CurlTransfer> transfer);
    void collectFinished();
    std::unique_ptr<CurlTransfer> remove(std::uint64_t id);
    bool isOpening(const std::string& host) const;

    std::uint64_t lastId_ = 0;
    const std::string caFile_;
    CURLM* const multi_;
    const std::shared_ptr<Inbox> inbox_;
    std::map<std::uint64_t, std::unique_ptr<CurlTransfer>> running_;
    std::thread thread_;
};

void CurlTransport::Worker::run() {
    std::vector<std::unique_ptr<CurlTransfer>> starting;
    std::vector<std::uint64_t> cancelled;
    while (inbox_->take(starting, cancelled)) {
        for (auto& transfer : starting) start(std::move(transfer));
        for (const auto id : cancelled) remove(id);
        starting.clear();
        cancelled.clear();
        int active = 0;
        curl_multi_perform(multi_, &active);
        collectFinished();
        // Sleeps until a socket, one of libcurl's own deadlines or the inbox has something to do.
        curl_multi_poll(multi_, nullptr, 0, INT_MAX, nullptr);
    }
    for (auto& transfer : starting) transfer->abandon(std::make_exception_ptr(Cancelled{}));
    while (!running_.empty()) {
        remove(running_.begin()->first)->abandon(std::make_exception_ptr(Cancelled{}));
    }
}

void CurlTransport::Worker::start(std::unique_ptr<CurlTransfer> transfer) {
    if (transfer->opensConnection() && isOpening(authority(transfer->url()))) return;
    if (!transfer->prepare(caFile_) ||
        curl_multi_add_handle(multi_, transfer->handle()) != CURLM_OK) {
        transfer->abandon(std::make_exception_ptr(QuorviError::message(say::requestNotMade())));
        return;
    }
    const auto id = transfer->id();
    running_.emplace(id, std::move(transfer));
}

void CurlTransport::Worker::collectFinished() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        const auto result = message->data.result;
        CurlTransfer* transfer = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
        const auto finished = remove(transfer->id());
        finished->finish(result);
    }
}

std::unique_ptr<CurlTransfer> CurlTransport::Worker::remove(std::uint64_t id) {
    const auto found = running_.find(id);
    if (found == running_.end()) return nullptr;
    auto transfer = std::move(found->second);
    running_.erase(found);
    curl_multi_remove_handle(multi_, transfer->handle());
    return transfer;
}

bool CurlTransport::Worker::isOpening(const std::string& host) const {
    for (const auto& [id, transfer] : running_)
        if (transfer->opensConnection() && authority(transfer->url()) == host) return true;
    return false;
}

CurlTransport::CurlTransport(Scheduler& scheduler, std::string caFile)
    : scheduler_(scheduler), worker_(std::make_unique<Worker>(std::move(caFile))) {}

CurlTransport::~CurlTransport() = default;

Task<HttpResponse> CurlTransport::send(HttpRequest request, std::stop_token stop) {
    Promise<HttpResponse> promise(scheduler_);
    const auto id = worker_->nextId();
    // From here on the request is wiped, whatever happens.
    auto transfer = std::make_unique<CurlTransfer>(id, std::move(request), promise);
    throwIfStopped(stop);
    auto future = promise.future(stop);
    const auto inbox = worker_->inbox();
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
    worker_->inbox()->start(
        std::make_unique<CurlTransfer>(worker_->nextId(), std::move(head), std::nullopt));
}

}  // namespace quorvi
