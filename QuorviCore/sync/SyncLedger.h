#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/base/SharedString.h"
#include "QuorviCore/sync/SyncItem.h"

namespace quorvi {

struct DictationRecord;
struct TextCorrection;

// Looks shared strings up by any kind of text.
struct SharedStringHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>()(s); }
};
template <class Value>
using SharedStringMap = std::unordered_map<SharedString, Value, SharedStringHash, std::equal_to<>>;
using SharedStringSet = std::unordered_set<SharedString, SharedStringHash, std::equal_to<>>;

// A local value as it is now, where it may differ from what the ledger has last seen.
struct LocalChange {
    SharedString id;
    std::optional<SharedString> payload;  // none when there is no such value (any more)
    bool redacted = false;                // a dictation without text, or that is gone

    // With `redacted` found out from the id and the payload.
    static LocalChange of(SharedString id, std::optional<SharedString> payload);
    bool operator==(const LocalChange&) const = default;
};
using LocalChanges = std::vector<LocalChange>;

// What the baseline holds of one id.
struct BaselineValue {
    std::optional<SharedString> payload;  // absent if the baseline lacks the id

    bool operator==(const BaselineValue&) const = default;
};

// The last known version of every synchronised value, and this installation's clock. It tells what
// has changed locally since the last look and which of two versions wins, and knows payloads only
// as bytes. A plain value, for one thread at a time; copies share the bytes.
class SyncLedger {
public:
    using Items = SharedStringMap<SyncItem>;
    using Payloads = SharedStringMap<SharedString>;
    using Differences = SharedStringMap<BaselineValue>;

    // Empty, of a new device, at clock 1.
    SyncLedger();

    const Items& items() const { return items_; }
    const SyncItem* item(std::string_view id) const;  // none when the id is unknown
    const SharedString& device() const { return device_; }
    // The highest revision that was issued here or seen in a merged item. Never decreases.
    std::int64_t clock() const { return clock_; }

    // The local values as of the last capture, which the next one compares with.
    const SharedString* baseline(std::string_view id) const;
    const SharedString* baseline(const SyncItem& item) const;  // of one of the items
    Payloads baseline() const;
    bool hasBaseline() const;  // whether it holds anything

    // Makes a new version of every value that differs between `current`, which is all local values,
    // and the baseline, and takes `current` for the new baseline. Yields the ids with a new
    // version. A value that another device has deleted is not brought back. `now` dates the
    // versions; those of a `seed` are older than whatever a device has written.
    std::vector<SharedString> capture(const Payloads& current, bool seed, Date now);
    // The same when only these values can differ from the baseline, at the cost of these only. May
    // be called for one part of the changes after the other.
    std::vector<SharedString> capture(std::span<const LocalChange> changes, bool seed, Date now);

    // Takes the local value for what it was at the last look, without a new version.
    void adopt(const LocalChange& value) { setBaseline(value.id, value.payload); }

    // Folds in one version from elsewhere. Yields what is held then.
    const SyncItem& merge(const SyncItem& incoming);

    // Takes the payloads of all live items for the baseline, so that values which are written into
    // the stores don't read as local edits. Yields what the baseline was kept in, which may be
    // large and takes its time to go.
    [[nodiscard]] Differences rebaseline();

    // Canonical encodings: keys sorted, no white space, so that equal values give equal bytes. They
    // throw when a value can't be encoded.
    static std::string encode(const SyncItem& item);
    static std::string encode(const DictationRecord& record);
    static std::string encode(const TextCorrection& rule);

    // For what restores a ledger.
    struct Parts {
        Items items;
        SharedString device;
        std::int64_t clock = 1;
        // Where the baseline differs from the item's payload.
        Differences differences;
    };
    explicit SyncLedger(Parts parts);
    // Replaces what is known of one id. `difference` as in Parts; none when there is none.
    void restore(const SyncItem& item, std::optional<BaselineValue> difference);
    void restoreClock(std::int64_t clock) { clock_ = clock; }
    const Differences& differences() const { return differences_; }

private:
    bool captureOne(const LocalChange& change, bool seed, std::int64_t milliseconds);
    void setBaseline(const SharedString& id, const std::optional<SharedString>& payload);

    Items items_;
    SharedString device_;
    std::int64_t clock_ = 1;
    // The baseline is nearly always the item's payload, so only what differs is kept: none where
    // the baseline lacks the id.
    Differences differences_;
};

}  // namespace quorvi
