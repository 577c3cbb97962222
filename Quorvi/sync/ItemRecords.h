#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/sync/SyncArchive.h"

// How the ledger's items are kept in the cloud: one record for each, in one zone.
namespace quorvi::itemRecords {

inline constexpr std::string_view zone = "QuorviAccount";
inline constexpr std::string_view type = "QuorviItem";

// Returns the record to save for an item; nullopt without such an item. It carries the change tag
// of the version that was seen last, so that a stale save is refused.
std::optional<CloudRecord> toSend(const SyncState& state, const CloudRecordID& id);

struct Merged {
    const SyncItem* held = nullptr;  // the item afterwards; null if the record was left out
    bool cloudIsBehind = false;      // the cloud holds another version than `held`
};
// Merges a record from the cloud into the ledger. One that is not an item's is counted and left
// out.
Merged merge(SyncArchive& archive, const CloudRecord& record);

}  // namespace quorvi::itemRecords
