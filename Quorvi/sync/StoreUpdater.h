#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>

#include "Quorvi/sync/Activity.h"
#include "Quorvi/sync/GuardedArchive.h"
#include "Quorvi/sync/LocalCapture.h"
#include "Quorvi/sync/StoreUpdate.h"
#include "Quorvi/sync/SyncedStores.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

// Writes into the stores what the ledger holds and they do not. An update is prepared in the
// background from the ledger of one moment, and written in one turn unless something has changed
// meanwhile; then it is prepared again. Main thread; part of AccountSync.
class StoreUpdater {
public:
    StoreUpdater(const SyncedStores& stores, GuardedArchive& archive, LocalCapture& capture,
                 Scheduler& scheduler, TaskScope& tasks);

    // Set before the first update. Called when the stores have been written.
    std::function<void()> onUpdated;

    // The stores may differ from the ledger, all of them or in the value of this id.
    void need();
    void noteMerged(const SharedString& id);
    // An update that is being prepared is out of date.
    void invalidate() { ++generation_; }
    // No update is written between the two: a fetch has not brought everything that belongs
    // together. Paused at first.
    void pause() { isPaused_ = true; }
    void resume() { isPaused_ = false; }

    // Begins an update if one is needed and possible.
    void updateIfPossible();
    // The same, resumed when nothing is left that can be updated now.
    Task<void> update(std::stop_token stop);

private:
    bool canUpdate() const;
    Task<void> tryToUpdate(std::stop_token stop);
    void commit(const StoreUpdate& update);
    static LocalChanges valuesNow(const StoreUpdate& update, const LocalSnapshot& now);

    const SyncedStores& stores_;
    GuardedArchive& archive_;
    LocalCapture& capture_;
    TaskScope& tasks_;

    bool isPaused_ = true;
    bool isNeeded_ = false;
    bool rulesMerged_ = false;  // the order of the rules may differ
    std::uint64_t generation_ = 0;
    Activity preparing_;
};

}  // namespace quorvi
