#include "Quorvi/platform/linux/postgres/PostgresWorker.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "QuorviCore/async/Task.h"

namespace quorvi {

namespace {

// Queries in flight: enough to keep the server busy, few enough to limit the memory of an upload.
constexpr std::size_t pipelined = 3;

// Always use the index: without statistics, as in a new database, the planner might scan the whole
// table. A writer that waits for another one of the account times out.
constexpr auto settings =
    "SELECT pg_catalog.set_config(name, value, false) FROM (VALUES ('lock_timeout', '10s'),"
    " ('statement_timeout', '120s'), ('idle_in_transaction_session_timeout', '10s'),"
    " ('enable_seqscan', 'off'), ('enable_bitmapscan', 'off'), ('jit', 'off')) s (name, value)";
constexpr auto openAccount = "SELECT o.id::text, o.push FROM quorvi.open_account() o";
constexpr auto lastChange =
    "SELECT a.version FROM quorvi.accounts a WHERE a.account = CURRENT_USER::text";

TimePoint now() {
    return std::chrono::steady_clock::now();
}

// A query of the worker's own.
class Errand : public PostgresJob {
public:
    Errand(std::string sql, std::function<void(const PostgresAnswer&)> then)
        : sql_(std::move(sql)), then_(std::move(then)) {}

    std::optional<PostgresQuery> next(const PostgresAccount&) override {
        return PostgresQuery(sql_);
    }
    void answered(const PostgresAnswer& answer) override { then_(answer); }
    void failed(const std::exception_ptr&) override {}

private:
    const std::string sql_;
    const std::function<void(const PostgresAnswer&)> then_;
};

}  // namespace

PostgresWorker::PostgresWorker(PostgresAddress address, PostgresPassword password, Events events,
                               PostgresTimes times)
    : address_(std::move(address)),
      password_(std::move(password)),
      events_(std::move(events)),
      times_(times),
      wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      retryAfter_(times.firstRetry) {
    if (!wake_) throw std::system_error(errno, std::generic_category(), "eventfd");
    thread_ = std::thread([this] { run(); });
    pthread_setname_np(thread_.native_handle(), "quorvi-postgres");
}

PostgresWorker::~PostgresWorker() {
    close();
    join();
}

void PostgresWorker::close() {
    {
        std::lock_guard lock(mutex_);
        closing_ = true;
    }
    stop_.request_stop();
    ::eventfd_write(wake_.get(), 1);
}

void PostgresWorker::join() {
    if (thread_.joinable()) thread_.join();
}

void PostgresWorker::submit(std::shared_ptr<PostgresJob> job) {
    std::lock_guard lock(mutex_);
    inbox_.push_back(std::move(job));
    ::eventfd_write(wake_.get(), 1);
}

void PostgresWorker::run() {
    while (takeInbox()) {
        work();
        wait();
    }
    failAll(std::make_exception_ptr(Cancelled{}));
}

bool PostgresWorker::takeInbox() {
    std::lock_guard lock(mutex_);
    for (auto& job : inbox_) queue_.push_back(std::move(job));
    inbox_.clear();
    return !closing_;
}

void PostgresWorker::work() {
    dropAbandoned();
    if (!connection_ && (!queue_.empty() || (subscribed_ && now() >= retryAt_))) open();
    if (!connection_) return;
    if (connection_->state() == PostgresConnection::State::ready) {
        if (!session_ && outstanding_.empty()) beginSession();
        takeAnswers();
        askForChanges();
        sendJobs();
    }
    const bool waiting =
        connection_ &&
        (connection_->state() == PostgresConnection::State::connecting || !outstanding_.empty());
    if (!connection_) return;
    if (connection_->state() == PostgresConnection::State::lost) {
        lose(connection_->failure());
    } else if (waiting && isSilent()) {
        lose(CloudError(cloudErrorCode::networkFailure, "The database server does not answer."));
    } else if (!waiting && !subscribed_ && queue_.empty() && now() >= idleSince_ + times_.idle) {
        connection_.reset();
        session_ = false;
    }
}

// Restarts the timeout for the other end.
void PostgresWorker::expectAnswer() {
    deadline_ = now() + times_.response;
    unacknowledged_ = connection_->unacknowledged();
}

bool PostgresWorker::isSilent() {
    if (now() < deadline_) return false;
    // A slow link may take long to send what the system has buffered.
    if (connection_->state() == PostgresConnection::State::connecting ||
        connection_->unacknowledged() >= unacknowledged_)
        return true;
    expectAnswer();
    return false;
}

void PostgresWorker::dropAbandoned() {
    std::erase_if(queue_, [](const auto& job) { return job->isAbandoned(); });
}

void PostgresWorker::open() {
    auto password = password_ ? password_(stop_.get_token()) : std::nullopt;
    session_ = false;
    listening_ = false;
    connection_ = std::make_unique<PostgresConnection>(address_, password);
    deadline_ = now() + times_.connect;
}

void PostgresWorker::beginSession() {
    // Works without a setting that the server does not know.
    enqueueFirst(std::make_shared<Errand>(settings, [](const PostgresAnswer&) {}));
    enqueueFirst(
        std::make_shared<Errand>(openAccount, [this](const auto& answer) { opened(answer); }));
    connection_->flush();
}

// Sends a query of the worker before all other jobs.
void PostgresWorker::enqueueFirst(std::shared_ptr<PostgresJob> job) {
    if (const auto query = job->next(account_)) connection_->send(*query);
    if (outstanding_.empty()) expectAnswer();
    outstanding_.push_back(std::move(job));
}

void PostgresWorker::opened(const PostgresAnswer& answer) {
    if (answer.error || answer.result.rows() != 1) {
        lose(answer.error.value_or(CloudError(cloudErrorCode::badContainer)));
        return;
    }
    const auto before = std::exchange(account_, {.id = std::string(answer.result.text(0, 0)),
                                                 .push = answer.result.boolean(0, 1)});
    account_.channel = "quorvi_";
    std::ranges::copy_if(account_.id, std::back_inserter(account_.channel),
                         [](char c) { return c != '-'; });
    session_ = true;
    retryAfter_ = times_.firstRetry;
    idleSince_ = now();
    if (!before.id.empty() && before.id != account_.id) events_.accountChange();
    if (subscribed_) enqueueFirst(std::make_shared<PostgresSubscription>(*this));
}

void PostgresWorker::takeAnswers() {
    while (connection_) {
        const auto answer = connection_->takeAnswer();
        if (!answer) break;
        const auto job = std::move(outstanding_.front());
        outstanding_.pop_front();
        idleSince_ = now();
        job->answered(*answer);
    }
    if (connection_ && connection_->takeNotification()) events_.remoteChange();
}

void PostgresWorker::askForChanges() {
    if (!session_ || !subscribed_ || listening_ || now() < nextPoll_) return;
    nextPoll_ = now() + times_.poll;
    enqueueFirst(std::make_shared<Errand>(lastChange, [this](const PostgresAnswer& answer) {
        if (answer.error || answer.result.rows() != 1) return;
        const auto version = answer.result.number(0, 0);
        if (std::exchange(lastVersion_, version).value_or(version) != version)
            events_.remoteChange();
    }));
}

void PostgresWorker::sendJobs() {
    while (session_ && connection_->state() == PostgresConnection::State::ready &&
           !queue_.empty() && outstanding_.size() < pipelined) {
        const auto job = queue_.front();
        const auto query = job->isAbandoned() ? std::nullopt : job->next(account_);
        if (!query) {
            queue_.pop_front();
            continue;
        }
        connection_->send(*query);
        if (outstanding_.empty()) expectAnswer();
        outstanding_.push_back(job);
    }
    if (connection_) connection_->flush();
}

void PostgresWorker::lose(CloudError why) {
    const bool refused = why.code() == cloudErrorCode::notAuthenticated;
    connection_.reset();
    session_ = false;
    listening_ = false;
    retryAt_ = now() + retryAfter_;
    retryAfter_ = std::min(retryAfter_ * 2, times_.lastRetry);
    failAll(std::make_exception_ptr(std::move(why)));
    // The login worked before and is now refused.
    if (refused && !std::exchange(account_, {}).id.empty()) events_.accountChange();
}

void PostgresWorker::failAll(const std::exception_ptr& why) {
    const auto outstanding = std::exchange(outstanding_, {});
    const auto queue = std::exchange(queue_, {});
    for (const auto& job : outstanding) job->failed(why);
    for (const auto& job : queue) job->failed(why);
}

TimePoint PostgresWorker::wakeAt() const {
    if (!connection_) return subscribed_ ? retryAt_ : TimePoint::max();
    if (connection_->state() == PostgresConnection::State::connecting || !outstanding_.empty())
        return deadline_;
    if (!subscribed_) return idleSince_ + times_.idle;
    return listening_ ? TimePoint::max() : nextPoll_;
}

void PostgresWorker::wait() {
    std::array<pollfd, 2> ready{{{wake_.get(), POLLIN, 0}, {-1, 0, 0}}};
    if (connection_) ready[1] = {connection_->descriptor(), connection_->events(), 0};
    int milliseconds = -1;
    if (const auto at = wakeAt(); at != TimePoint::max()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(at - now()).count();
        milliseconds = static_cast<int>(std::clamp<std::int64_t>(left, 0, 3'600'000));
    }
    ::poll(ready.data(), ready.size(), milliseconds);
    if (ready[0].revents) {
        eventfd_t ignored;
        ::eventfd_read(wake_.get(), &ignored);
    }
    if (!ready[1].revents) return;
    connection_->advance();
    if (connection_->state() == PostgresConnection::State::ready) expectAnswer();
}

PostgresSubscription::PostgresSubscription(PostgresWorker& worker,
                                           std::optional<Promise<void>> promise)
    : worker_(worker), promise_(std::move(promise)) {}

std::optional<PostgresQuery> PostgresSubscription::next(const PostgresAccount& account) {
    if (std::exchange(sent_, true)) return std::nullopt;
    return PostgresQuery(account.push ? "LISTEN " + account.channel : std::string(lastChange));
}

void PostgresSubscription::answered(const PostgresAnswer& answer) {
    // Notifications were lost while there was no connection, so report a change; from now on they
    // arrive.
    if (std::exchange(worker_.subscribed_, true)) worker_.events_.remoteChange();
    worker_.listening_ = worker_.account_.push && !answer.error;
    if (!worker_.listening_) worker_.nextPoll_ = now();
    if (promise_) promise_->resolve();
}

void PostgresSubscription::failed(const std::exception_ptr& why) {
    if (promise_) promise_->reject(why);
}

}  // namespace quorvi
