#pragma once

#include <functional>

#include "Quorvi/corrections/CorrectionStore.h"
#include "Quorvi/history/HistoryStore.h"
#include "Quorvi/settings/Settings.h"
#include "QuorviCore/sync/LocalSnapshot.h"

namespace quorvi {

// The stores whose values are kept the same on all machines. Main thread.
struct SyncedStores {
    HistoryStore& history;
    CorrectionStore& corrections;
    Preferences& preferences;
    // True while values must not change: during a dictation, and while a shortcut is being chosen.
    std::function<bool()> areInUse;

    // False if a store is still loading or failed to load: it must not be taken for an empty one.
    bool areReady() const {
        return !history.isLoading() && !history.persistenceError() &&
               !corrections.persistenceError() && preferences.couldBeRead();
    }
    LocalSnapshot snapshot() const {
        return {history.records(), corrections.rules(), Settings(preferences).travelling()};
    }
};

}  // namespace quorvi
