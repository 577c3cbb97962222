#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/base/SharedString.h"

namespace quorvi {

// One version of one synchronised value. A plain value whose copies share their bytes.
struct SyncItem {
    SyncItem(SharedString id, std::optional<SharedString> payload, std::int64_t revision,
             SharedString device, bool redacted);

    SharedString id;  // the value's key: "history:…", "correction:…", "setting:…"
    std::optional<SharedString> payload;  // the encoded value; absent when it was deleted
    std::int64_t revision = 0;            // the writer's clock, normally milliseconds since 1970
    SharedString device;                  // who wrote it
    bool redacted = false;                // a dictation whose text is dropped; never unset again

    bool deleted() const { return !payload; }

    // What both machines end with when this version is held and `other`, of the same id, comes in:
    // a deletion beats everything, else the larger (revision, device) does, and a tie keeps what is
    // held. When either is redacted, so is the result, and a dictation's text is taken out of it.
    SyncItem merging(const SyncItem& other) const;

    // The canonical JSON form. Malformed UTF-8 of the id or the device is written as U+FFFD.
    std::string encoded() const;
    void appendEncoded(std::string& out) const;
    // Nothing when the text is no JSON, or a field is missing or of another type. Thread-safe.
    static std::optional<SyncItem> decode(std::string_view json);

    bool operator==(const SyncItem&) const = default;
};

// Sorts by revision, then by device, both descending; items equal in both keep their order.
void sortNewestFirst(std::vector<SyncItem>& items);

}  // namespace quorvi
