#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "QuorviCore/corrections/TextCorrections.h"
#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/settings/SettingValue.h"
#include "QuorviCore/sync/SyncLedger.h"

namespace quorvi {

// The prefixes of the ids of synchronised values.
namespace syncPrefix {
inline constexpr std::string_view history = "history:";
inline constexpr std::string_view correction = "correction:";
inline constexpr std::string_view setting = "setting:";
}  // namespace syncPrefix

// All local values at one moment. Shares them with the stores, so that a snapshot is cheap and
// unchanged parts are compared by identity. Immutable, readable on any thread. Of several records
// or rules with one id the latest counts, and of equally late ones the one with the greatest bytes.
// A value that can't be encoded is left out.
class LocalSnapshot {
public:
    LocalSnapshot() = default;
    LocalSnapshot(DictationRecords records, TextCorrections rules, SettingValues settings);

    const DictationRecords& records() const { return records_; }
    const TextCorrections& rules() const { return rules_; }
    const SettingValues& settings() const { return settings_; }

    // Whether nothing has changed between the two; takes 0.1 ms for any number of values. May be
    // false for equal snapshots of separate lists.
    bool isSharedWith(const LocalSnapshot& other) const;

    // Returns an upper bound on the number of values that changesSince() compares. With more than
    // some thousands, call that on another thread.
    std::size_t distanceFrom(const LocalSnapshot& captured) const;

    // Returns the values that differ between the two, as they are in this one. The ledger's
    // baseline must have been captured from `captured`. The cost depends on the number of changes,
    // except for one search of the whole list for values that have changed or gone.
    LocalChanges changesSince(const LocalSnapshot& captured, const SyncLedger& ledger) const;

    // Returns the values that differ from the ledger's baseline, by comparing every one.
    LocalChanges changesFrom(const SyncLedger& ledger) const;

    // Encodes a setting as a property list with the single entry "value".
    static SharedString encode(const SettingValue& value);
    // Returns nullopt for anything that encode() does not write.
    static std::optional<SettingValue> decode(std::string_view payload);
    static SharedString historyId(const Uuid& id);

private:
    DictationRecords records_;
    TextCorrections rules_;
    SettingValues settings_;
};

}  // namespace quorvi
