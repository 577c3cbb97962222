#include "Quorvi/sync/ItemExchange.h"

#include <algorithm>
#include <string>
#include <variant>

#include "Quorvi/sync/CloudMessage.h"
#include "Quorvi/sync/CloudRecordFields.h"
#include "Quorvi/sync/ItemRecords.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

ItemExchange::ItemExchange(GuardedArchive& archive, LocalCapture& capture, StoreUpdater& updater,
                           Scheduler& scheduler)
    : archive_(archive), capture_(capture), updater_(updater), scheduler_(scheduler) {}

void ItemExchange::use(CloudSyncEngine* engine) {
    engine_ = engine;
    if (!engine) return;
    const auto& pending = archive_->state().pending;
    unoffered_.assign(pending.begin(), pending.end());
}

void ItemExchange::addPending(const SharedString& id) {
    archive_->addPending(id);
    unoffered_.push_back(id);
}

bool ItemExchange::mayOffer() const {
    return engine_ && canRun() && archive_->state().initialFetchComplete;
}

void ItemExchange::offerSome() {
    const auto count = std::min(idsPerTurn, unoffered_.size());
    std::vector<PendingRecordZoneChange> changes;
    changes.reserve(count);
    for (auto id = unoffered_.end() - static_cast<std::ptrdiff_t>(count); id != unoffered_.end();
         ++id)
        if (archive_->state().pending.contains(*id))
            changes.push_back(PendingRecordZoneChange::saveRecord(
                {std::string(itemRecords::zone), std::string(id->view())}));
    unoffered_.resize(unoffered_.size() - count);
    engine_->state().add(changes);
}

void ItemExchange::offerPending() {
    if (mayOffer() && unoffered_.size() <= idsPerTurn) offerSome();
}

Task<void> ItemExchange::offerAll(std::stop_token stop) {
    while (mayOffer() && !unoffered_.empty()) {
        offerSome();
        auto turn = sleepFor(scheduler_, Duration(), stop);
        co_await turn;
    }
}

Task<void> ItemExchange::fetch(std::shared_ptr<CloudSyncEngine> engine, std::stop_token stop) {
    fetchFailure_.reset();
    auto fetching = engine->fetchChanges(stop);
    co_await fetching;
    if (engine.get() == engine_ && fetchFailure_) throw CloudError(*fetchFailure_);
}

std::optional<CloudRecordBatch> ItemExchange::nextRecordZoneChangeBatch(
    std::span<const CloudRecordID> pending, CloudSyncEngine& engine) {
    if (&engine != engine_ || !mayOffer()) return std::nullopt;
    const auto& state = archive_->state();
    return CloudRecordBatch::make(
        pending, [&state](const CloudRecordID& id) { return itemRecords::toSend(state, id); });
}

void ItemExchange::handleEvent(CloudSyncEvent event, CloudSyncEngine& engine) {
    if (&engine != engine_ || !canRun()) return;
    std::visit([this](const auto& one) { handle(one); }, event);
}

void ItemExchange::handle(const cloudEvent::StateUpdate& event) {
    archive_->setEngineState(SharedString(textOf(event.serialization)));
    archive_.persist();
}

void ItemExchange::handle(const cloudEvent::AccountChange& event) {
    const auto& owner = archive_->state().owner;
    if (event.kind == cloudEvent::AccountChange::Kind::signIn && owner &&
        owner->view() == event.currentUser) {
        offerPending();
        return;
    }
    onStatus(say::syncCheckingAccount());
    onAccountChange();
}

void ItemExchange::handle(const cloudEvent::FetchedDatabaseChanges& event) {
    archive_->count("fetchedDatabaseBatches");
    archive_->count("fetchedZones", static_cast<std::int64_t>(event.modified.size()));
    const bool isReset = std::ranges::count(event.deleted, itemRecords::zone) > 0;
    // Without it, the next connection begins anew: with the old one it would find this again.
    if (isReset) archive_->setEngineState(std::nullopt);
    archive_.persist();
    if (isReset) onReset();
}

// Local edits are captured first, so that changes from elsewhere are merged with them.
void ItemExchange::handle(const cloudEvent::FetchedRecordZoneChanges& event) {
    archive_->count("fetchedBatches");
    archive_->count("fetchedRecords", static_cast<std::int64_t>(event.modifications.size()));
    archive_->count("fetchedDeletions", static_cast<std::int64_t>(event.deletions.size()));
    capture_.capture();
    for (const auto& record : event.modifications)
        if (!merge(record)) reclaim(record);
    for (const auto& id : event.deletions) handleDeletion(id);
    finishMerging();
}

void ItemExchange::handle(const cloudEvent::SentRecordZoneChanges& event) {
    capture_.capture();
    for (const auto& record : event.saved)
        if (!merge(record)) noteSaved(record);
    for (const auto& save : event.failed) handleFailedSave(save);
    finishMerging();
}

void ItemExchange::finishMerging() {
    archive_.persist();
    updater_.updateIfPossible();
    offerPending();
}

void ItemExchange::handle(const cloudEvent::DidFetchRecordZoneChanges& event) {
    if (!event.error) return;
    fetchFailure_ = event.error;
    archive_->count("fetchFailures");
    onStatus(cloudMessage(*event.error));
}

void ItemExchange::handleFailedSave(const cloudEvent::FailedRecordSave& save) {
    const SharedString name(save.record.id.name);
    const auto code = save.error.code();
    if (code == cloudErrorCode::serverRecordChanged && save.error.serverRecord()) {
        if (!merge(*save.error.serverRecord())) reclaim(*save.error.serverRecord());
    } else if (code == cloudErrorCode::zoneNotFound) {
        archive_->removeRecord(name);
        engine_->state().add(PendingDatabaseChange::saveZone(std::string(itemRecords::zone)));
    } else if (code == cloudErrorCode::unknownItem) {
        archive_->removeRecord(name);
    } else {
        onStatus(cloudMessage(save.error));
    }
    addPending(name);
}

// A record that was deleted in the cloud, which this program never does itself.
void ItemExchange::handleDeletion(const CloudRecordID& id) {
    const auto* held = archive_->ledger().item(id.name);
    if (id.zone != itemRecords::zone || held == nullptr) return;
    const SyncItem tombstone(held->id, std::nullopt, held->revision, held->device, held->redacted);
    archive_->merge(tombstone);
    archive_->removeRecord(tombstone.id);
    archive_->removePending(tombstone.id);
    updater_.need();
}

// Something else is in the place of an item that this machine holds: the item is saved over it.
void ItemExchange::reclaim(const CloudRecord& record) {
    const auto* held = archive_->ledger().item(record.id.name);
    if (record.id.zone != itemRecords::zone || held == nullptr) return;
    noteSaved(record);
    addPending(held->id);
}

void ItemExchange::noteSaved(const CloudRecord& record) {
    const SharedString name(record.id.name);
    const CloudRecord fields{record.id, std::string(itemRecords::type), {}, record.changeTag};
    archive_->setRecord(name, SharedString(encodeRecordFields(fields)));
    archive_->removePending(name);
}

// Returns false, and leaves everything as it is, if the record is not an item's.
bool ItemExchange::merge(const CloudRecord& record) {
    const auto merged = itemRecords::merge(*archive_, record);
    if (!merged.held) return false;
    const auto& id = merged.held->id;
    if (merged.cloudIsBehind)
        addPending(id);
    else
        archive_->removePending(id);
    updater_.noteMerged(id);
    return true;
}

}  // namespace quorvi
