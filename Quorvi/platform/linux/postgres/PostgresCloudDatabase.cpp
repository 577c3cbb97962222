#include "Quorvi/platform/linux/postgres/PostgresCloudDatabase.h"

#include <algorithm>
#include <utility>

#include "Quorvi/platform/linux/postgres/PostgresAddress.h"
#include "Quorvi/platform/linux/postgres/PostgresChanges.h"
#include "Quorvi/platform/linux/postgres/PostgresSave.h"
#include "Quorvi/platform/linux/postgres/PostgresWorker.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// Records per page: few at first, while their size is unknown, then as many as fit this size.
constexpr std::size_t firstPage = 200;
constexpr std::size_t largestPage = 2'000;
constexpr std::size_t bytesInPage = 4 << 20;
// An older prefetched page may be outdated.
constexpr auto freshness = 2s;

void checkName(const std::string& name) {
    if (name.find('\0') != name.npos || !text::isValidUtf8(name))
        throw CloudError(cloudErrorCode::invalidArguments, "A name can't be stored.");
}

// Abandons a job when the coroutine that awaits it ends.
class Abandon {
public:
    explicit Abandon(std::shared_ptr<PostgresJob> job) : job_(std::move(job)) {}
    ~Abandon() { job_->abandon(); }
    Abandon(const Abandon&) = delete;
    Abandon& operator=(const Abandon&) = delete;

private:
    const std::shared_ptr<PostgresJob> job_;
};

}  // namespace

PostgresCloudDatabase::PostgresCloudDatabase(Scheduler& scheduler, const std::string& address,
                                             PostgresPassword password, PostgresTimes times,
                                             Executor* end)
    : scheduler_(scheduler),
      observers_(std::make_shared<Observers>()),
      pageSize_(firstPage),
      dropsAhead_(observers_->remoteChange.subscribe([this] { dropAhead(); })),
      worker_(startWorker(address, std::move(password), times)),
      end_(end) {}

PostgresCloudDatabase::~PostgresCloudDatabase() {
    if (!end_ || !worker_) return;
    worker_->close();
    end_->run([worker = std::shared_ptr<PostgresWorker>(std::move(worker_)),
               &scheduler = scheduler_]() mutable {
        worker->join();
        // What it was given belongs to the main thread.
        scheduler.post([worker = std::move(worker)] {});
    });
}

std::unique_ptr<PostgresWorker> PostgresCloudDatabase::startWorker(const std::string& address,
                                                                   PostgresPassword password,
                                                                   PostgresTimes times) {
    // Events that are pending when the database is destroyed are dropped.
    const auto tell = [this](Observable Observers::* whom) {
        return [&scheduler = scheduler_, weak = std::weak_ptr(observers_), whom] {
            scheduler.post([weak, whom] {
                if (const auto observers = weak.lock()) ((*observers).*whom).notify();
            });
        };
    };
    try {
        return std::make_unique<PostgresWorker>(
            PostgresAddress(address), std::move(password),
            PostgresWorker::Events{tell(&Observers::remoteChange), tell(&Observers::accountChange)},
            times);
    } catch (const QuorviError& error) {
        refusal_ = CloudError(cloudErrorCode::invalidArguments, error.what());
    } catch (const std::exception& error) {  // libpq is missing
        refusal_ = CloudError(cloudErrorCode::badContainer, error.what());
    }
    return nullptr;
}

std::optional<Message> PostgresCloudDatabase::refusal(const std::string& address) {
    try {
        PostgresAddress checked(address);
        return std::nullopt;
    } catch (const QuorviError& error) {
        return error.sentence();
    } catch (const std::exception&) {
        return say::syncNoAccess(cloudErrorCode::badContainer);
    }
}

PostgresWorker& PostgresCloudDatabase::worker() const {
    if (!worker_) throw CloudError(*refusal_);
    return *worker_;
}

Task<CloudAccountStatus> PostgresCloudDatabase::accountStatus(std::stop_token stop) {
    auto asking = userRecordName(stop);
    try {
        (void)co_await asking;
    } catch (const CloudError& error) {
        if (error.code() != cloudErrorCode::notAuthenticated) throw;
        co_return CloudAccountStatus::noAccount;
    }
    co_return CloudAccountStatus::available;
}

Task<std::string> PostgresCloudDatabase::userRecordName(std::stop_token stop) {
    throwIfStopped(stop);
    Promise<std::string> promise(scheduler_);
    auto future = promise.future(stop);
    const auto job = std::make_shared<PostgresRequest<std::string>>(
        promise,
        [](const PostgresAccount&) {
            return PostgresQuery(
                "SELECT a.id::text FROM quorvi.accounts a WHERE a.account = CURRENT_USER::text");
        },
        [](const PostgresResult& rows, const PostgresAccount&) {
            if (rows.rows() == 0)
                throw CloudError(cloudErrorCode::notAuthenticated, "The account was removed.");
            return std::string(rows.text(0, 0));
        });
    worker().submit(job);
    Abandon abandon(job);
    co_return co_await future;
}

Task<void> PostgresCloudDatabase::saveZone(std::string zone, std::stop_token stop) {
    auto changing = changeZone("SELECT quorvi.save_zone($1)", std::move(zone), stop);
    co_await changing;
}

Task<void> PostgresCloudDatabase::deleteZone(std::string zone, std::stop_token stop) {
    auto changing = changeZone("SELECT quorvi.delete_zone($1)", std::move(zone), stop);
    co_await changing;
}

Task<void> PostgresCloudDatabase::changeZone(const char* statement, std::string zone,
                                             std::stop_token stop) {
    throwIfStopped(stop);
    checkName(zone);
    dropAhead();
    Promise<void> promise(scheduler_);
    auto future = promise.future(stop);
    const auto job = std::make_shared<PostgresRequest<void>>(
        promise,
        [statement, zone](const PostgresAccount&) { return PostgresQuery(statement).text(zone); },
        [](const PostgresResult&, const PostgresAccount&) {});
    worker().submit(job);
    Abandon abandon(job);
    co_await future;
}

Task<std::vector<CloudSaveResult>> PostgresCloudDatabase::saveRecords(
    std::vector<CloudRecord> records, std::stop_token stop) {
    throwIfStopped(stop);
    dropAhead();
    Promise<std::vector<CloudSaveResult>> promise(scheduler_);
    auto future = promise.future(stop);
    const auto job = std::make_shared<PostgresSave>(std::move(records), promise);
    worker().submit(job);
    Abandon abandon(job);
    co_return co_await future;
}

Task<CloudRecord> PostgresCloudDatabase::fetchRecord(CloudRecordID id, std::stop_token stop) {
    throwIfStopped(stop);
    checkName(id.zone);
    checkName(id.name);
    Promise<CloudRecord> promise(scheduler_);
    auto future = promise.future(stop);
    const auto job = fetchRecordJob(std::move(id), promise);
    worker().submit(job);
    Abandon abandon(job);
    co_return co_await future;
}

Task<CloudZoneChanges> PostgresCloudDatabase::zoneChanges(std::string token, std::stop_token stop) {
    throwIfStopped(stop);
    dropAhead();  // it may lack what this list tells of
    Promise<CloudZoneChanges> promise(scheduler_);
    auto future = promise.future(stop);
    const auto job = zoneChangesJob(token, promise);
    worker().submit(job);
    Abandon abandon(job);
    co_return co_await future;
}

Task<CloudRecordChanges> PostgresCloudDatabase::recordChanges(std::string zone, std::string token,
                                                              std::stop_token stop) {
    throwIfStopped(stop);
    checkName(zone);
    auto ready = takeAhead(zone, token);
    auto page = ready ? std::move(*ready) : ask(std::move(zone), std::move(token));
    auto future = page.promise.future(stop);
    Abandon abandon(page.job);
    CloudRecordChanges changes = co_await future;
    learnSize(changes);
    // The server prepares the next page while this one is processed.
    if (changes.more) ahead_ = ask(page.zone, changes.token);
    co_return changes;
}

PostgresCloudDatabase::Page PostgresCloudDatabase::ask(std::string zone, std::string token) {
    Promise<CloudRecordChanges> promise(scheduler_);
    auto job = recordChangesJob(zone, token, pageSize_, promise);
    worker().submit(job);
    return {std::move(zone), std::move(token), std::move(job), promise, scheduler_.now()};
}

std::optional<PostgresCloudDatabase::Page> PostgresCloudDatabase::takeAhead(
    const std::string& zone, const std::string& token) {
    if (!ahead_) return std::nullopt;
    const bool fits = ahead_->zone == zone && ahead_->token == token &&
                      scheduler_.now() < ahead_->asked + freshness;
    if (!fits) dropAhead();
    return std::exchange(ahead_, std::nullopt);
}

void PostgresCloudDatabase::dropAhead() {
    if (ahead_) ahead_->job->abandon();
    ahead_.reset();
}

void PostgresCloudDatabase::learnSize(const CloudRecordChanges& page) {
    if (page.modified.empty()) return;
    std::size_t bytes = 0;
    for (const auto& record : page.modified)
        bytes += 100 + (record.payload ? record.payload->size() : 0);
    pageSize_ = std::clamp<std::size_t>(bytesInPage * page.modified.size() / bytes, 1, largestPage);
}

Task<void> PostgresCloudDatabase::saveSubscription(std::string, std::stop_token stop) {
    throwIfStopped(stop);
    Promise<void> promise(scheduler_);
    auto future = promise.future(stop);
    const auto job = std::make_shared<PostgresSubscription>(worker(), promise);
    worker().submit(job);
    Abandon abandon(job);
    co_await future;
}

Subscription PostgresCloudDatabase::onRemoteChange(std::function<void()> observer) {
    return observers_->remoteChange.subscribe(std::move(observer));
}

Subscription PostgresCloudDatabase::onAccountChange(std::function<void()> observer) {
    return observers_->accountChange.subscribe(std::move(observer));
}

}  // namespace quorvi
