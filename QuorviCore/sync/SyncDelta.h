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

// Thrown for what is no document of the synchronisation, or no change of one.
class SyncFormatError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// What changed in a state: the present values of what was touched. Applied to the earlier state it
// gives the later one, and applying it once more changes nothing.
struct SyncDelta {
    struct Value {
        SharedString id;
        std::optional<SyncItem> item;
        std::optional<BaselineValue> difference;  // as in SyncLedger::differences()
        std::optional<SharedString> record;
        bool pending = false;
    };

    bool rebaselined = false;  // before any of the values
    std::vector<Value> values;
    std::int64_t clock = 1;
    std::optional<SharedString> owner;
    bool engineStateChanged = false;
    std::optional<SharedString> engineState;  // only when it changed
    bool initialFetchComplete = false;
    std::optional<Date> lastSynced;
    std::optional<std::map<std::string, std::int64_t, std::less<>>> diagnostics;

    // All of one id as the state has it.
    static Value valueOf(const SyncState& state, const SharedString& id);

    void applyTo(SyncState& state) const;

    // A binary form, for this machine only.
    void appendTo(std::string& out) const;
    // Takes the first delta off the bytes. Throws SyncFormatError.
    static SyncDelta takeFrom(std::string_view& bytes);
};

}  // namespace quorvi
