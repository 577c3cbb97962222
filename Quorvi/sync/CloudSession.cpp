#include "Quorvi/sync/CloudSession.h"

#include <cmath>
#include <utility>

#include "Quorvi/sync/CloudMessage.h"
#include "Quorvi/sync/ItemRecords.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr auto localChangeDelay = 1s;

// How far the saved time of the last pass may be behind, in seconds.
constexpr double savedTimeAge = 600;

}  // namespace

CloudSession::CloudSession(Environment environment, bool isEnabled)
    : environment_(std::move(environment)),
      isEnabled_(isEnabled),
      connecting_(environment_.scheduler),
      passing_(environment_.scheduler) {}

Task<void> CloudSession::begin(std::stop_token stop) {
    if (environment_.database)
        remoteChanges_ = environment_.database->onRemoteChange([this] { passNow(); });
    if (!isEnabled_) co_return;
    auto connecting = connect(stop);
    co_await connecting;
}

void CloudSession::end() {
    hasEnded_ = true;
    remoteChanges_ = {};
    stop();
}

void CloudSession::setEnabled(bool enabled) {
    isEnabled_ = enabled;
    // Events are ignored from now on, so the engine may know of values that nobody holds: if sync
    // is switched on before the next turn, it must not go on either.
    if (!enabled) environment_.items.use(nullptr);
    inNextTurn([this, enabled] {
        if (hasEnded_) return;
        if (!enabled) stop();
        if (enabled != isEnabled_) return;
        if (enabled)
            startConnecting();
        else
            environment_.report(say::syncOff());
    });
}

void CloudSession::stop() {
    passTimer_.cancel();
    passAgain_ = false;
    ++attempt_;
    environment_.items.use(nullptr);
    if (const auto engine = std::exchange(engine_, nullptr)) engine->cancelOperations();
}

// --- Connecting ---

void CloudSession::startConnecting() {
    environment_.tasks.start([this](std::stop_token stop) { return connect(stop); });
}

Task<void> CloudSession::connect(std::stop_token stop) {
    if (!canRun() || connecting_.isActive() || engine_ || isPausedByCloud()) co_return;
    if (!environment_.database) {
        environment_.report(say::syncNoAccess(cloudErrorCode::badContainer));
        co_return;
    }
    const auto attempt = attempt_;
    {
        const Activity::Running connecting(connecting_);
        auto trying = tryToConnect(attempt, stop);
        co_await trying;
    }
    // Sync was switched off and on again meanwhile, and nobody else would try.
    if (attempt == attempt_ || !canRun() || engine_ || isPausedByCloud()) co_return;
    inNextTurn([this] { startConnecting(); });
}

Task<void> CloudSession::tryToConnect(std::uint64_t attempt, std::stop_token stop) {
    std::exception_ptr failure;
    try {
        auto opening = openConnection(attempt, stop);
        co_await opening;
    } catch (const std::exception&) {
        failure = std::current_exception();
    }
    // The end of an engine that was stopped is no failure.
    if (!failure || !isCurrent(attempt)) co_return;
    noteFailure(failure);
    this->stop();
}

Task<void> CloudSession::openConnection(std::uint64_t attempt, std::stop_token stop) {
    auto adopting = adoptAccount(attempt, stop);
    const bool isAdopted = co_await adopting;
    if (!isAdopted) co_return;
    auto subscribing = subscribe(attempt, stop);
    co_await subscribing;
    if (!isCurrent(attempt)) co_return;

    const auto engine = makeEngine();
    environment_.report(say::syncRunning());
    const auto& state = environment_.archive->state();
    if (!state.initialFetchComplete) {
        auto fetching = fetchForTheFirstTime(engine, stop);
        co_await fetching;
    }
    if (!isCurrent(engine) || !state.initialFetchComplete) co_return;
    auto passing = pass(stop);
    co_await passing;
}

// Returns whether the account that is signed in is the one that the data belongs to, which it
// becomes with the first connection.
Task<bool> CloudSession::adoptAccount(std::uint64_t attempt, std::stop_token stop) {
    auto& archive = environment_.archive;
    auto asking = environment_.database->accountStatus(stop);
    const auto account = co_await asking;
    if (!isCurrent(attempt)) co_return false;
    if (account != CloudAccountStatus::available) {
        environment_.report(say::syncSignIn());
        co_return false;
    }
    auto naming = environment_.database->userRecordName(stop);
    const auto user = co_await naming;
    if (!isCurrent(attempt)) co_return false;
    auto adopting = adoptCloud(user, attempt, stop);
    const bool isAdopted = co_await adopting;
    if (!isAdopted) co_return false;
    auto persisting = archive.persisted(stop);
    co_await persisting;
    co_return isCurrent(attempt);
}

// The user may choose another cloud: then nothing is known of it, and all values are offered to it.
// At the same address another owner is another person's account, unless the database is this
// machine's own: it may have been removed. Archives of version 1.0.0 don't have the address.
Task<bool> CloudSession::adoptCloud(std::string user, std::uint64_t attempt, std::stop_token stop) {
    auto& archive = environment_.archive;
    const auto& address = environment_.address;
    const auto& state = archive->state();
    const bool isAnotherCloud = state.cloud && state.cloud->view() != address;
    const bool isAnotherOwner = state.owner && state.owner->view() != user;
    if (isAnotherOwner && !isAnotherCloud && !address.empty()) {
        environment_.report(say::syncOtherAccount());
        co_return false;
    }
    if (isAnotherOwner || isAnotherCloud || !state.engineState) {
        auto listing = archive->idsInBackground(stop);
        auto ids = co_await listing;
        if (!isCurrent(attempt)) co_return false;
        archive->beginAnew(std::move(ids));
    }
    archive->setOwner(user);
    archive->setCloud(address);
    co_return true;
}

// Without a subscription changes of other machines arrive with the next pass only.
Task<void> CloudSession::subscribe(std::uint64_t attempt, std::stop_token stop) {
    bool isSubscribed = true;
    try {
        auto subscribing =
            environment_.database->saveSubscription(std::string(subscriptionID), stop);
        co_await subscribing;
    } catch (const std::exception&) {
        isSubscribed = false;
    }
    if (!isSubscribed && isCurrent(attempt))
        environment_.archive->count("notificationSetupFailures");
}

CloudSession::Engine CloudSession::makeEngine() {
    const auto& state = environment_.archive->state();
    Bytes serialization;
    if (state.engineState) serialization = bytesOf(state.engineState->view());
    engine_ = std::make_shared<CloudSyncEngine>(
        CloudSyncEngine::Configuration{*environment_.database, environment_.scheduler,
                                       std::move(serialization), environment_.items});
    engine_->state().add(PendingDatabaseChange::saveZone(std::string(itemRecords::zone)));
    environment_.items.use(engine_.get());
    return engine_;
}

Task<void> CloudSession::fetchForTheFirstTime(Engine engine, std::stop_token stop) {
    auto sending = engine->sendChanges(stop);
    co_await sending;
    if (!isCurrent(engine)) co_return;
    auto fetching = environment_.items.fetch(engine, stop);
    co_await fetching;
    if (!isCurrent(engine)) co_return;
    environment_.archive->setInitialFetchComplete(true);
    environment_.updater.resume();
    auto updating = environment_.updater.update(stop);
    co_await updating;
    environment_.archive.persist();
}

void CloudSession::reconnect() {
    inNextTurn([this] {
        stop();
        startConnecting();
    });
}

// --- Passes ---

void CloudSession::passSoon() {
    if (isEnabled_)
        passTimer_ = environment_.scheduler.after(localChangeDelay, [this] { passNow(); });
}

void CloudSession::passNow() {
    if (isWorking()) {
        passAgain_ = true;
        return;
    }
    environment_.tasks.start([this](std::stop_token stop) { return pass(stop); });
}

Task<void> CloudSession::pass(std::stop_token stop) {
    if (!canRun() || isWorking() || isPausedByCloud()) co_return;
    if (connecting_.isActive() && !environment_.archive->state().initialFetchComplete) co_return;
    if (!engine_) {
        auto connecting = connect(stop);
        co_await connecting;
        co_return;
    }
    {
        const Activity::Running passing(passing_);
        passAgain_ = false;
        environment_.onChange();
        auto trying = tryPass(stop);
        co_await trying;
    }
    environment_.onChange();
    if (passAgain_ && canRun()) inNextTurn([this] { passNow(); });
}

Task<void> CloudSession::tryPass(std::stop_token stop) {
    const auto engine = engine_;
    std::exception_ptr failure;
    try {
        auto exchanging = exchange(engine, stop);
        co_await exchanging;
    } catch (const std::exception&) {
        failure = std::current_exception();
    }
    if (failure && isCurrent(engine)) noteFailure(failure);
}

Task<void> CloudSession::exchange(Engine engine, std::stop_token stop) {
    auto checking = checkAccount(engine, stop);
    const bool isOwner = co_await checking;
    if (!isOwner) co_return;
    auto capturing = environment_.capture.captureAll(stop);
    co_await capturing;
    if (!isCurrent(engine)) co_return;

    environment_.report(say::syncRunning());
    environment_.updater.pause();
    auto fetching = environment_.items.fetch(engine, stop);
    co_await fetching;
    if (!isCurrent(engine)) co_return;
    environment_.updater.resume();
    auto updating = environment_.updater.update(stop);
    co_await updating;

    auto offering = environment_.items.offerAll(stop);
    co_await offering;
    if (!isCurrent(engine)) co_return;
    auto sending = engine->sendChanges(stop);
    co_await sending;
    if (isCurrent(engine)) endExchange();
}

// Returns whether the data's owner is signed in; ends the connection otherwise.
Task<bool> CloudSession::checkAccount(Engine engine, std::stop_token stop) {
    auto asking = environment_.database->accountStatus(stop);
    const auto account = co_await asking;
    if (!isCurrent(engine)) co_return false;
    std::string user;
    if (account == CloudAccountStatus::available) {
        auto naming = environment_.database->userRecordName(stop);
        user = co_await naming;
        if (!isCurrent(engine)) co_return false;
    }
    const auto& owner = environment_.archive->state().owner;
    if (account == CloudAccountStatus::available && owner && owner->view() == user) co_return true;
    environment_.report(say::syncAccountUnavailable());
    this->stop();
    co_return false;
}

void CloudSession::endExchange() {
    auto& archive = environment_.archive;
    if (const auto pending = archive->state().pending.size()) {
        environment_.report(say::syncPending(pending));
        environment_.onChange();
        return;
    }
    const auto now = environment_.scheduler.date();
    archive->setLastSynced(now);
    environment_.report(say::syncUpToDate());
    // The time of a pass without news is saved with the next change, or now and then: a disk that
    // is written to every few seconds never rests.
    const auto saved = savedLastSynced_.value_or(Date{}).secondsSinceReferenceDate;
    if (std::abs(now.secondsSinceReferenceDate - saved) >= savedTimeAge || archive->hasChanges()) {
        savedLastSynced_ = now;
        archive.persist();
    }
    environment_.onChange();
}

void CloudSession::noteFailure(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        environment_.report(cloudMessage(error));
        retryAfter_ = environment_.scheduler.now() + cloudRetryInterval(error);
    }
}

void CloudSession::inNextTurn(std::function<void()> work) {
    environment_.scheduler.post(lifetime_.guard(std::move(work)));
}

}  // namespace quorvi
