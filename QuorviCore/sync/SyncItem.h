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
    // The last millisecond of the year 9999. A later revision would beat whatever is written ever
    // after, so versions from elsewhere must not have one.
    static constexpr std::int64_t latestRevision = 253'402'300'799'999;

    SyncItem(SharedString id, std::optional<SharedString> payload, std::int64_t revision,
             SharedString device, bool redacted);

    SharedString id;  // the value's key: "history:…", "correction:…", "setting:…"
    std::optional<SharedString> payload;  // the encoded value; absent if deleted
    std::int64_t revision = 0;            // the writer's clock, normally milliseconds since 1970
    SharedString device;                  // the writer
    bool redacted = false;                // a dictation whose text was dropped, for good

    bool deleted() const { return !payload; }

    // Returns the version that results when this one is held and `other`, of the same id, arrives.
    // A deletion wins, otherwise the larger (revision, device); a tie keeps this one. If either is
    // redacted, the result is too, without a dictation's text.
    SyncItem merging(const SyncItem& other) const;

    // Returns the canonical JSON form. Malformed UTF-8 in the id or the device becomes U+FFFD.
    std::string encoded() const;
    void appendEncoded(std::string& out) const;
    // Returns nullopt for invalid JSON, and if a field is missing or has the wrong type.
    // Thread-safe.
    static std::optional<SyncItem> decode(std::string_view json);

    bool operator==(const SyncItem&) const = default;
};

// Sorts by revision, then by device, both descending. Stable.
void sortNewestFirst(std::vector<SyncItem>& items);

}  // namespace quorvi
