#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/sync/SyncState.h"

namespace quorvi {

// Thrown for a sync document or journal entry that can't be parsed.
class SyncFormatError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Forgets everything that was exchanged with a cloud; every item is pending then.
void beginAnew(SyncState& state);

// The difference between two states: the later values of everything that was touched. Applied to
// the earlier state it gives the later one; applying it again changes nothing.
struct SyncDelta {
    struct Value {
        SharedString id;
        std::optional<SyncItem> item;
        std::optional<BaselineValue> difference;  // as in SyncLedger::differences()
        std::optional<SharedString> record;
        bool pending = false;
    };

    // Both come before the values.
    bool rebaselined = false;
    bool begunAnew = false;  // as by beginAnew()
    std::vector<Value> values;
    std::int64_t clock = 1;
    std::optional<SharedString> owner;
    std::optional<SharedString> cloud;
    bool engineStateChanged = false;
    std::optional<SharedString> engineState;  // only when it changed
    bool initialFetchComplete = false;
    std::optional<Date> lastSynced;
    std::optional<std::map<std::string, std::int64_t, std::less<>>> diagnostics;

    // Returns everything that the state has of one id.
    static Value valueOf(const SyncState& state, const SharedString& id);

    void applyTo(SyncState& state) const;

    // A binary form for this machine only, since its byte order is not fixed.
    void appendTo(std::string& out) const;
    // Removes the first delta from the bytes and returns it. Throws SyncFormatError.
    static SyncDelta takeFrom(std::string_view& bytes);
};

}  // namespace quorvi
