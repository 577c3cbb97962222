#pragma once

#include <optional>
#include <vector>

#include "QuorviCore/corrections/TextCorrection.h"
#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/sync/LocalSnapshot.h"
#include "QuorviCore/sync/SyncState.h"

namespace quorvi {

// What the stores have to take over so that they hold what the ledger holds. It is prepared away
// from the main thread, from the ledger's differences to what the stores held at the last capture,
// and costs what has changed rather than the number of values, apart from one pass over them.
struct StoreUpdate {
    // The history as it was, with what differs: newest first. Parts that don't differ are shared.
    DictationRecords records;
    bool recordsDiffer = false;

    // All valid rules, the newest version first, one for each phrase; none when they need not be
    // taken over.
    std::optional<std::vector<TextCorrection>> rules;
    // All settings; none when none differs.
    std::optional<LocalSnapshot::Settings> settings;

    // Rules and settings of which it is to be looked at afterwards whether they were taken over.
    std::vector<SharedString> toCheck;
    // Dictations that can't be taken over as they are, in the form they take here.
    LocalChanges local;

    bool isEmpty() const { return !recordsDiffer && !rules && !settings && local.empty(); }

    // `base` is the history of the last capture. With `allRules` the rules are taken over even if
    // none differs, since their order may. Thread-safe.
    static StoreUpdate prepare(const SyncState& state, const DictationRecords& base, bool allRules);
};

}  // namespace quorvi
