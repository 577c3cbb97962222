#include "Quorvi/sync/ItemRecords.h"

#include "Quorvi/sync/CloudRecordFields.h"

namespace quorvi::itemRecords {

namespace {

// Why a record can't be an item's, as the diagnostics count it; empty for an item's.
std::string_view faultOf(const CloudRecord& record, const std::optional<SyncItem>& item) {
    if (record.id.zone != zone) return "ignoredZone";
    if (record.type != type) return "ignoredType";
    if (!record.payload) return "missingPayload";
    if (!item || item->revision > SyncItem::latestRevision) return "invalidPayload";
    if (item->id.view() != record.id.name) return "mismatchedID";
    return {};
}

}  // namespace

std::optional<CloudRecord> toSend(const SyncState& state, const CloudRecordID& id) {
    const auto* item = state.ledger.item(id.name);
    if (item == nullptr) return std::nullopt;
    std::optional<CloudRecord> record;
    if (const auto fields = state.records.find(id.name); fields != state.records.end())
        record = decodeRecordFields(fields->second.view());
    if (!record) record = CloudRecord{{std::string(zone), id.name}, std::string(type), {}, {}};
    record->payload = bytesOf(item->encoded());
    return record;
}

Merged merge(SyncArchive& archive, const CloudRecord& record) {
    const auto item = record.payload ? SyncItem::decode(textOf(*record.payload)) : std::nullopt;
    if (const auto fault = faultOf(record, item); !fault.empty()) {
        archive.count(fault);
        return {};
    }
    archive.count("mergedRecords");
    const auto& held = archive.merge(*item);
    archive.setRecord(held.id, SharedString(encodeRecordFields(record)));
    return {&held, held != *item};
}

}  // namespace quorvi::itemRecords
