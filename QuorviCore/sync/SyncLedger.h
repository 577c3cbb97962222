#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/base/SharedString.h"
#include "QuorviCore/base/SharedStringMap.h"
#include "QuorviCore/sync/SyncItem.h"

namespace quorvi {

// The present local value of one id, which may differ from the baseline.
struct LocalChange {
    SharedString id;
    std::optional<SharedString> payload;  // absent if there is no such value (any more)
    bool redacted = false;                // a dictation without text, or a deleted one

    // Derives `redacted` from the id and the payload.
    static LocalChange of(SharedString id, std::optional<SharedString> payload);
    bool operator==(const LocalChange&) const = default;
};
using LocalChanges = std::vector<LocalChange>;

// What the baseline holds of one id.
struct BaselineValue {
    std::optional<SharedString> payload;  // absent if the baseline lacks the id

    bool operator==(const BaselineValue&) const = default;
};

// The last known version of every synchronised value, and this installation's clock. Finds local
// changes since the last capture and merges versions from elsewhere; payloads are opaque bytes. A
// plain value, one thread at a time; copies share the bytes.
class SyncLedger {
public:
    using Items = SharedStringMap<SyncItem>;
    using Payloads = SharedStringMap<SharedString>;
    using Differences = SharedStringMap<BaselineValue>;

    // An empty ledger of a new device, clock 1.
    SyncLedger();

    const Items& items() const { return items_; }
    const SyncItem* item(std::string_view id) const;  // null if the id is unknown
    const SharedString& device() const { return device_; }
    // The highest revision issued here or seen in a merged item. Never decreases.
    std::int64_t clock() const { return clock_; }

    // The local values of the last capture, which the next one compares with.
    const SharedString* baseline(std::string_view id) const;
    const SharedString* baseline(const SyncItem& item) const;  // of one of the items
    Payloads baseline() const;
    bool hasBaseline() const;  // whether it is not empty

    // Creates a new version of every value that differs between `current`, which is all local
    // values, and the baseline; `current` becomes the baseline. Returns the ids with a new version.
    // A value that another device has deleted does not come back. `now` is the versions' time;
    // those of a `seed` are older than anything a device has written.
    std::vector<SharedString> capture(const Payloads& current, bool seed, Date now);
    // The same if only these values may differ from the baseline. The cost depends on their number
    // only. Changes may be captured in several parts.
    std::vector<SharedString> capture(std::span<const LocalChange> changes, bool seed, Date now);

    // Sets the baseline of one value, without a new version.
    void adopt(const LocalChange& value) { setBaseline(value.id, value.payload); }

    // Merges one version from elsewhere. Returns the version held afterwards.
    const SyncItem& merge(const SyncItem& incoming);

    // Makes the payloads of all live items the baseline, so that values written into the stores
    // don't count as local edits. Returns the old differences; destroying them may be slow.
    [[nodiscard]] Differences rebaseline();

    // For restoring a ledger.
    struct Parts {
        Items items;
        SharedString device;
        std::int64_t clock = 1;
        // The baseline of the ids where it is not the item's payload.
        Differences differences;
    };
    explicit SyncLedger(Parts parts);
    // Replaces everything known of one id. `difference` as in Parts; absent without one.
    void restore(const SyncItem& item, std::optional<BaselineValue> difference);
    void restoreClock(std::int64_t clock) { clock_ = clock; }
    const Differences& differences() const { return differences_; }

private:
    bool captureOne(const LocalChange& change, bool seed, std::int64_t milliseconds);
    void setBaseline(const SharedString& id, const std::optional<SharedString>& payload);

    Items items_;
    SharedString device_;
    std::int64_t clock_ = 1;
    // The baseline is nearly always the item's payload, so only the differences are stored.
    Differences differences_;
};

}  // namespace quorvi
