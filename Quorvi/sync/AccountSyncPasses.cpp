#include <algorithm>
#include <cmath>
#include <utility>

#include "Quorvi/sync/AccountSync.h"
#include "Quorvi/sync/CloudMessage.h"

// Connecting, passes, and what ends them. Whatever is awaited may take any time, and the user may
// switch, or the account change, meanwhile: what is done afterwards counts only while the engine,
// or the attempt to connect, is still the present one.
namespace quorvi {

namespace {

using namespace std::chrono_literals;

// What the engine is told of within one turn of the main thread.
constexpr std::size_t idsPerTurn = 2000;

// How far the time of the last pass may be behind on the disk, in seconds.
constexpr double keptTimeAge = 600;

// Says so when it ends, however that comes about.
class WhileSet {
public:
    explicit WhileSet(bool& flag) : flag_(flag) { flag_ = true; }
    ~WhileSet() { flag_ = false; }
    WhileSet(const WhileSet&) = delete;
    WhileSet& operator=(const WhileSet&) = delete;

private:
    bool& flag_;
};

}  // namespace

Task<void> AccountSync::connect(std::stop_token stop) {
    if (!canRun() || connecting_ || engine_ || environment_.scheduler.now() < retryAfter_)
        co_return;
    const auto attempt = connection_;
    {
        const WhileSet connecting(connecting_);
        auto trying = tryToConnect(attempt, stop);
        co_await trying;
    }
    // Switched off and on again meanwhile: nobody else would try.
    if (attempt == connection_ || !canRun() || engine_) co_return;
    if (environment_.scheduler.now() < retryAfter_) co_return;
    inNextTurn([this] { tasks_.start([this](std::stop_token again) { return connect(again); }); });
}

Task<void> AccountSync::tryToConnect(std::uint64_t attempt, std::stop_token stop) {
    std::exception_ptr failure;
    std::shared_ptr<CloudSyncEngine> engine;
    const auto isPresent = [&] { return canRun() && attempt == connection_; };
    try {
        auto asking = environment_.database.accountStatus(stop);
        const auto account = co_await asking;
        if (!isPresent()) co_return;
        if (account != CloudAccountStatus::available) {
            setStatus(say::syncSignIn());
            co_return;
        }
        auto naming = environment_.database.userRecordName(stop);
        const auto user = co_await naming;
        if (!isPresent()) co_return;
        const auto& owner = archive_->state().owner;
        if (owner && owner->view() != user) {
            setStatus(say::syncOtherAccount());
            co_return;
        }
        archive_->setOwner(user);
        auto saving = archive_->persist(stop);
        const bool saved = co_await saving;
        persisted(saved);
        if (!isPresent()) co_return;
        bool subscribed = true;
        try {
            auto subscribing =
                environment_.database.saveSubscription(std::string(subscriptionID), stop);
            co_await subscribing;
        } catch (const std::exception&) {
            subscribed = false;
        }
        if (!isPresent()) co_return;
        if (!subscribed) archive_->count("notificationSetupFailures");

        Bytes serialization;
        if (const auto& state = archive_->state().engineState) serialization = bytesOf(state->view());
        engine = std::make_shared<CloudSyncEngine>(CloudSyncEngine::Configuration{
            environment_.database, environment_.scheduler, std::move(serialization), *this,
            std::string(subscriptionID)});
        engine_ = engine;
        engine->state().add(PendingDatabaseChange::saveZone(std::string(zoneName)));
        setStatus(say::syncRunning());
        offerAllAgain();
        if (!archive_->state().initialFetchComplete) {
            auto fetching = fetchForTheFirstTime(engine, stop);
            co_await fetching;
        }
        if (!isCurrent(engine) || !archive_->state().initialFetchComplete) co_return;
        auto passing = pass(stop);
        co_await passing;
    } catch (const std::exception&) {
        failure = std::current_exception();
    }
    // The end of an engine that was stopped is no failure.
    if (!failure || !isPresent()) co_return;
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        recordFailure(error);
    }
    this->stop();
}

Task<void> AccountSync::fetchForTheFirstTime(std::shared_ptr<CloudSyncEngine> engine,
                                             std::stop_token stop) {
    auto sending = engine->sendChanges(stop);
    co_await sending;
    if (!isCurrent(engine)) co_return;
    fetchFailure_.reset();
    auto fetching = engine->fetchChanges(stop);
    co_await fetching;
    if (!isCurrent(engine)) co_return;
    if (fetchFailure_) throw CloudError(*fetchFailure_);
    archive_->setInitialFetchComplete(true);
    needsFetchCompletion_ = false;
    auto applying = applyAll(stop);
    co_await applying;
    persist();
}

void AccountSync::syncNow() {
    if (working_) {
        passAgain_ = true;
        return;
    }
    tasks_.start([this](std::stop_token stop) { return pass(stop); });
}

Task<void> AccountSync::pass(std::stop_token stop) {
    if (!canRun() || working_ || environment_.scheduler.now() < retryAfter_) co_return;
    if (connecting_ && !archive_->state().initialFetchComplete) co_return;
    if (!engine_) {
        auto connecting = connect(stop);
        co_await connecting;
        co_return;
    }
    {
        const WhileSet working(working_);
        passAgain_ = false;
        changed();
        auto trying = tryPass(stop);
        co_await trying;
    }
    changed();
    if (passAgain_ && canRun()) inNextTurn([this] { syncNow(); });
}

Task<void> AccountSync::tryPass(std::stop_token stop) {
    const auto engine = engine_;
    std::exception_ptr failure;
    try {
        auto exchanging = exchange(engine, stop);
        co_await exchanging;
    } catch (const std::exception&) {
        failure = std::current_exception();
    }
    if (!failure || !isCurrent(engine)) co_return;
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        recordFailure(error);
    }
}

Task<void> AccountSync::exchange(std::shared_ptr<CloudSyncEngine> engine, std::stop_token stop) {
    auto asking = environment_.database.accountStatus(stop);
    const auto account = co_await asking;
    if (!isCurrent(engine)) co_return;
    std::string user;
    if (account == CloudAccountStatus::available) {
        auto naming = environment_.database.userRecordName(stop);
        user = co_await naming;
        if (!isCurrent(engine)) co_return;
    }
    const auto& owner = archive_->state().owner;
    if (account != CloudAccountStatus::available || !owner || owner->view() != user) {
        setStatus(say::syncAccountUnavailable());
        this->stop();
        co_return;
    }

    auto capturing = captureAll(stop);
    co_await capturing;
    if (!isCurrent(engine)) co_return;
    setStatus(say::syncRunning());
    needsFetchCompletion_ = true;
    fetchFailure_.reset();
    auto fetching = engine->fetchChanges(stop);
    co_await fetching;
    if (!isCurrent(engine)) co_return;
    if (fetchFailure_) throw CloudError(*fetchFailure_);
    needsFetchCompletion_ = false;

    auto applying = applyAll(stop);
    co_await applying;
    auto scheduling = scheduleInSlices(stop);
    co_await scheduling;
    if (!isCurrent(engine)) co_return;
    auto sending = engine->sendChanges(stop);
    co_await sending;
    if (!isCurrent(engine)) co_return;

    const auto pending = archive_->state().pending.size();
    if (pending == 0) {
        lastSynced_ = environment_.scheduler.date();
        archive_->setLastSynced(*lastSynced_);
        setStatus(say::syncUpToDate());
        // The time of a pass without news goes along with the next change, or is written now and
        // then: a disk that is written to every few seconds for nothing else never rests.
        const auto kept = keptLastSynced_.value_or(Date{}).secondsSinceReferenceDate;
        const bool isOld = std::abs(lastSynced_->secondsSinceReferenceDate - kept) >= keptTimeAge;
        if (isOld || archive_->hasChanges()) {
            keptLastSynced_ = lastSynced_;
            persist();
        }
    } else {
        setStatus(say::syncPending(pending));
    }
    changed();
}

bool AccountSync::mayOfferRecords() const {
    return canRun() && engine_ && archive_->state().initialFetchComplete;
}

// A new engine knows nothing of what waits.
void AccountSync::offerAllAgain() {
    const auto& pending = archive_->state().pending;
    unscheduled_.assign(pending.begin(), pending.end());
}

void AccountSync::scheduleSome() {
    const auto count = std::min(idsPerTurn, unscheduled_.size());
    std::vector<PendingRecordZoneChange> changes;
    changes.reserve(count);
    for (auto id = unscheduled_.end() - static_cast<std::ptrdiff_t>(count);
         id != unscheduled_.end(); ++id)
        if (archive_->state().pending.contains(*id))
            changes.push_back(PendingRecordZoneChange::saveRecord(
                {std::string(zoneName), std::string(id->view())}));
    unscheduled_.resize(unscheduled_.size() - count);
    engine_->state().add(changes);
}

// Much is left to the next pass, which takes its time for it.
void AccountSync::schedulePending() {
    if (mayOfferRecords() && unscheduled_.size() <= idsPerTurn) scheduleSome();
}

Task<void> AccountSync::scheduleInSlices(std::stop_token stop) {
    while (mayOfferRecords() && !unscheduled_.empty()) {
        scheduleSome();
        auto turn = sleepFor(environment_.scheduler, 0s, stop);
        co_await turn;
    }
}

void AccountSync::stop() {
    localSync_.cancel();
    passAgain_ = false;
    ++connection_;
    if (const auto engine = std::exchange(engine_, nullptr)) engine->cancelOperations();
}

void AccountSync::recordFailure(const std::exception& error) {
    setStatus(cloudMessage(error));
    retryAfter_ = environment_.scheduler.now() + cloudRetryInterval(error);
}

}  // namespace quorvi
