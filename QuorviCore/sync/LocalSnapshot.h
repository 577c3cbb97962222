#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "QuorviCore/base/Bytes.h"
#include "QuorviCore/corrections/TextCorrections.h"
#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/sync/SyncLedger.h"

namespace quorvi {

// How the id of a synchronised value begins.
namespace syncPrefix {
inline constexpr std::string_view history = "history:";
inline constexpr std::string_view correction = "correction:";
inline constexpr std::string_view setting = "setting:";
}  // namespace syncPrefix

// All local values at one moment. It shares them with the stores, so that taking one costs nothing,
// and two of them are compared by identity where nothing changed. Immutable: may be read on any
// thread. Where a history holds several records of one id, the latest counts, and the greatest
// bytes of equally late ones; so with rules. A value that can't be encoded is left out.
class LocalSnapshot {
public:
    using Setting = std::variant<std::string, bool, std::int64_t, Bytes>;
    using Settings = std::map<std::string, Setting, std::less<>>;

    LocalSnapshot() = default;
    LocalSnapshot(DictationRecords records, TextCorrections rules, Settings settings);

    const DictationRecords& records() const { return records_; }
    const TextCorrections& rules() const { return rules_; }
    const Settings& settings() const { return settings_; }

    // Whether nothing changed in between: 0.1 ms for any number of values. May be false for
    // snapshots that are equal but come from separate lists.
    bool isSharedWith(const LocalSnapshot& other) const;

    // An upper bound on the number of values that changesSince() has to look at. Above some
    // thousands it belongs off the main thread.
    std::size_t distanceFrom(const LocalSnapshot& captured) const;

    // The values that differ between the two, as they are in this one. `captured` must be what the
    // ledger's baseline was captured from. Costs what has changed, not the number of values, except
    // that a value which is gone or has changed is looked for once more in the whole list.
    LocalChanges changesSince(const LocalSnapshot& captured, const SyncLedger& ledger) const;

    // The values that differ from the ledger's baseline, by looking at every one.
    LocalChanges changesFrom(const SyncLedger& ledger) const;

    // Every value, by its id.
    SyncLedger::Payloads payloads() const;

    // The payload of a setting: a property list with the one entry "value".
    static SharedString encode(const Setting& value);
    // Nothing for what no setting is encoded as.
    static std::optional<Setting> decode(std::string_view payload);
    static SharedString historyId(const Uuid& id);

private:
    DictationRecords records_;
    TextCorrections rules_;
    Settings settings_;
};

}  // namespace quorvi
