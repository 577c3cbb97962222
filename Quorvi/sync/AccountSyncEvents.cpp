#include <utility>
#include <variant>

#include "Quorvi/sync/AccountSync.h"
#include "Quorvi/sync/CloudMessage.h"
#include "Quorvi/sync/CloudRecordFields.h"

// What the engine tells and asks.
namespace quorvi {

void AccountSync::handleEvent(CloudSyncEvent event, CloudSyncEngine& engine) {
    if (&engine != engine_.get() || !canRun()) return;
    std::visit([this](const auto& one) { handle(one); }, event);
}

void AccountSync::handle(const cloudEvent::StateUpdate& event) {
    archive_->setEngineState(SharedString(textOf(event.serialization)));
    persist();
}

void AccountSync::handle(const cloudEvent::AccountChange& event) {
    const auto& owner = archive_->state().owner;
    if (event.kind == cloudEvent::AccountChange::Kind::signIn && owner &&
        owner->view() == event.currentUser) {
        schedulePending();
        return;
    }
    setStatus(say::syncCheckingAccount());
    inNextTurn([this] {
        stop();
        tasks_.start([this](std::stop_token again) { return connect(again); });
    });
}

void AccountSync::handle(const cloudEvent::FetchedDatabaseChanges& event) {
    archive_->count("fetchedDatabaseBatches");
    archive_->count("fetchedZones", static_cast<std::int64_t>(event.modified.size()));
    persist();
    for (const auto& zone : event.deleted) {
        if (zone != zoneName) continue;
        setStatus(say::syncCloudReset());
        setEnabled(false);
        return;
    }
}

// Local edits are taken in first, so that what comes from elsewhere is merged with them.
void AccountSync::handle(const cloudEvent::FetchedRecordZoneChanges& event) {
    archive_->count("fetchedBatches");
    archive_->count("fetchedRecords", static_cast<std::int64_t>(event.modifications.size()));
    archive_->count("fetchedDeletions", static_cast<std::int64_t>(event.deletions.size()));
    capture();
    for (const auto& record : event.modifications) merge(record);
    for (const auto& id : event.deletions) {
        const auto* held = archive_->ledger().item(id.name);
        if (id.zone != zoneName || held == nullptr) continue;
        const SyncItem tombstone(held->id, std::nullopt, held->revision, held->device,
                                 held->redacted);
        archive_->merge(tombstone);
        archive_->removeRecord(tombstone.id);
        archive_->removePending(tombstone.id);
        needsApply_ = true;
        ++generation_;
    }
    persist();
    applyIfReady();
    schedulePending();
}

void AccountSync::handle(const cloudEvent::SentRecordZoneChanges& event) {
    capture();
    for (const auto& record : event.saved) merge(record);
    for (const auto& save : event.failed) handleFailedSave(save);
    persist();
    applyIfReady();
    schedulePending();
}

void AccountSync::handleFailedSave(const cloudEvent::FailedRecordSave& save) {
    const SharedString name(save.record.id.name);
    const auto code = save.error.code();
    if (code == cloudErrorCode::serverRecordChanged && save.error.serverRecord()) {
        merge(*save.error.serverRecord());
    } else if (code == cloudErrorCode::zoneNotFound) {
        archive_->removeRecord(name);
        engine_->state().add(PendingDatabaseChange::saveZone(std::string(zoneName)));
    } else if (code == cloudErrorCode::unknownItem) {
        archive_->removeRecord(name);
    } else {
        setStatus(cloudMessage(save.error));
    }
    addPending(name);
}

void AccountSync::handle(const cloudEvent::DidFetchRecordZoneChanges& event) {
    if (!event.error) return;
    fetchFailure_ = event.error;
    archive_->count("fetchFailures");
    setStatus(cloudMessage(*event.error));
}

void AccountSync::merge(const CloudRecord& record) {
    if (record.id.zone != zoneName) return archive_->count("ignoredZone");
    if (record.type != recordType) return archive_->count("ignoredType");
    if (!record.payload) return archive_->count("missingPayload");
    const auto item = SyncItem::decode(textOf(*record.payload));
    if (!item) return archive_->count("invalidPayload");
    if (item->id.view() != record.id.name) return archive_->count("mismatchedID");

    archive_->count("mergedRecords");
    const auto& held = archive_->merge(*item);
    archive_->setRecord(held.id, SharedString(encodeRecordFields(record)));
    // When the two are the same, the cloud holds what this machine holds.
    if (held == *item)
        archive_->removePending(held.id);
    else
        addPending(held.id);
    if (held.id.view().starts_with(syncPrefix::correction)) rulesMerged_ = true;
    if (held.id.view().starts_with(syncPrefix::correction) ||
        archive_->ledger().differences().contains(held.id)) {
        needsApply_ = true;
        ++generation_;
    }
}

std::optional<CloudRecordBatch> AccountSync::nextRecordZoneChangeBatch(
    std::span<const CloudRecordID> pending, CloudSyncEngine& engine) {
    if (&engine != engine_.get() || !mayOfferRecords()) return std::nullopt;
    return CloudRecordBatch::make(pending,
                                  [this](const CloudRecordID& id) { return recordToSend(id); });
}

// With the change tag of the version that was seen last, so that a stale save is refused.
std::optional<CloudRecord> AccountSync::recordToSend(const CloudRecordID& id) const {
    const auto* item = archive_->ledger().item(id.name);
    if (item == nullptr) return std::nullopt;
    std::optional<CloudRecord> record;
    const auto& records = archive_->state().records;
    if (const auto fields = records.find(id.name); fields != records.end())
        record = decodeRecordFields(fields->second.view());
    if (!record)
        record = CloudRecord{{std::string(zoneName), id.name}, std::string(recordType), {}, {}};
    record->payload = bytesOf(SyncLedger::encode(*item));
    return record;
}

}  // namespace quorvi
