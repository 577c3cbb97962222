#pragma once

#include <optional>
#include <vector>

#include "QuorviCore/corrections/TextCorrection.h"
#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/sync/LocalSnapshot.h"
#include "QuorviCore/sync/SyncState.h"

namespace quorvi {

// The values to write into the stores so that they hold what the ledger holds. Prepared on the
// executor from the ledger's differences to the stores' values at the last capture. Costs one pass
// over the items, and otherwise depends on the number of changes.
struct StoreUpdate {
    // The history at the last capture with the differences applied, newest first. Unchanged parts
    // are shared.
    DictationRecords records;
    bool recordsDiffer = false;

    // All valid rules, newest version first, one for each phrase; absent if none has to be written.
    std::optional<std::vector<TextCorrection>> rules;
    // All settings; absent if none differs.
    std::optional<SettingValues> settings;

    // Rules and settings that the stores may alter, to be compared after they were written.
    std::vector<SharedString> toCheck;
    // Dictations that can't be stored exactly, in the form that the store will hold.
    LocalChanges local;

    // `base` is the history at the last capture. With `allRules` the rules are written even if none
    // differs, since their order may. Thread-safe.
    static StoreUpdate prepare(const SyncState& state, const DictationRecords& base, bool allRules);
};

}  // namespace quorvi
