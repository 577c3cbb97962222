#include "Quorvi/sync/CloudSyncEngine.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "Quorvi/sync/CloudEngineCore.h"
#include "Quorvi/sync/CloudFetch.h"
#include "Quorvi/sync/CloudSend.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

// Fetches or sends when all earlier operations have ended.
template <class Exchange>
Task<void> runInTurn(std::shared_ptr<CloudEngineCore> core, std::stop_token stop) {
    CloudEngineCore::Operation operation(*core);
    std::stop_callback link(stop, [&operation] { operation.stop(); });
    try {
        core->check(operation.token());
        auto turn = operation.turn();
        co_await turn;
        core->check(operation.token());
        Exchange exchange(*core, operation.token());
        auto work = exchange.run();
        co_await work;
    } catch (const Cancelled&) {
        if (core->engine && operation.isCancelled() && !stop.stop_requested())
            throw CloudError(cloudErrorCode::operationCancelled, "The operation was cancelled.");
        throw;
    }
}

}  // namespace

CloudRecordBatch CloudRecordBatch::make(
    std::span<const CloudRecordID> pending,
    const std::function<std::optional<CloudRecord>(const CloudRecordID&)>& provider) {
    CloudRecordBatch batch;
    std::size_t bytes = 0;
    for (const auto& id : pending) {
        if (batch.records.size() == maximumRecords) break;
        auto record = provider(id);
        if (!record) {
            batch.missing.push_back(id);
            continue;
        }
        bytes += record->payload ? record->payload->size() : 0;
        if (bytes > maximumBytes && !batch.records.empty()) break;
        batch.records.push_back(std::move(*record));
    }
    return batch;
}

CloudSyncEngine::CloudSyncEngine(Configuration configuration)
    : core_(std::make_shared<CloudEngineCore>(*this, configuration)),
      scope_(configuration.scheduler) {
    accountSubscription_ = core_->database.onAccountChange([this] {
        accountCheck_.cancel();
        accountCheck_ = scope_.start([this](std::stop_token stop) { return checkAccount(stop); });
    });
}

CloudSyncEngine::~CloudSyncEngine() {
    core_->engine = nullptr;
    for (auto* operation : core_->operations) operation->stop();
}

Task<void> CloudSyncEngine::fetchChanges(std::stop_token stop) {
    return runInTurn<CloudFetch>(core_, std::move(stop));
}

Task<void> CloudSyncEngine::sendChanges(std::stop_token stop) {
    return runInTurn<CloudSend>(core_, std::move(stop));
}

void CloudSyncEngine::cancelOperations() {
    for (auto* operation : core_->operations) operation->cancel();
}

// --- The account ---

Task<void> CloudSyncEngine::checkAccount(std::stop_token stop) {
    std::string user;  // empty: nobody
    try {
        auto asking = core_->database.accountStatus(stop);
        const auto status = co_await asking;
        if (status == CloudAccountStatus::available) {
            auto naming = core_->database.userRecordName(stop);
            user = co_await naming;
        } else if (status == CloudAccountStatus::temporarilyUnavailable ||
                   status == CloudAccountStatus::couldNotDetermine) {
            co_return;  // nothing is known about the user
        }
    } catch (const CloudError&) {
        co_return;  // the next operation finds out
    }
    // In a turn of its own, since the delegate may destroy the engine and with it this task.
    std::weak_ptr<CloudEngineCore> weak = core_;
    core_->scheduler.post([weak, user] {
        const auto core = weak.lock();
        if (core && core->engine) core->engine->accountIs(user);
    });
}

void CloudSyncEngine::accountIs(const std::string& user) {
    using Kind = cloudEvent::AccountChange::Kind;
    auto& memory = core_->memory;
    const auto previous = core_->isSignedOut ? std::string() : memory.user;
    if (user == previous) return;
    const auto kind = previous.empty() ? Kind::signIn
                      : user.empty()   ? Kind::signOut
                                       : Kind::switchAccounts;
    if (kind != Kind::signIn) cancelOperations();
    core_->isSignedOut = user.empty();
    // The tokens of one user's data are useless for another's.
    if (!user.empty() && user != memory.user) {
        memory.databaseToken.clear();
        memory.zoneTokens.clear();
        memory.unfinishedZones.clear();
        memory.user = user;
    }
    core_->delegate.handleEvent(cloudEvent::AccountChange{kind, previous, user}, *this);
}

// --- What is to be sent ---

void CloudSyncEngine::State::add(PendingDatabaseChange change) {
    auto& zones = engine_.core_->memory.pendingZones;
    if (std::find(zones.begin(), zones.end(), change.zone) == zones.end())
        zones.push_back(std::move(change.zone));
}

void CloudSyncEngine::State::add(PendingRecordZoneChange change) {
    engine_.core_->pending.add(std::move(change.id));
}

void CloudSyncEngine::State::add(std::span<const PendingRecordZoneChange> changes) {
    for (const auto& change : changes) engine_.core_->pending.add(change.id);
}

bool CloudSyncEngine::State::contains(const PendingRecordZoneChange& change) const {
    return engine_.core_->pending.contains(change.id);
}

std::size_t CloudSyncEngine::State::pendingRecordZoneChangeCount() const {
    return engine_.core_->pending.size();
}

std::vector<PendingRecordZoneChange> CloudSyncEngine::State::pendingRecordZoneChanges() const {
    std::vector<PendingRecordZoneChange> changes;
    for (auto& id : engine_.core_->pending.all(SIZE_MAX)) changes.push_back({std::move(id)});
    return changes;
}

std::vector<PendingDatabaseChange> CloudSyncEngine::State::pendingDatabaseChanges() const {
    std::vector<PendingDatabaseChange> changes;
    for (const auto& zone : engine_.core_->memory.pendingZones) changes.push_back({zone});
    return changes;
}

}  // namespace quorvi
