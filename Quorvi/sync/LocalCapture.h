#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <stop_token>
#include <string_view>
#include <vector>

#include "Quorvi/sync/Activity.h"
#include "Quorvi/sync/GuardedArchive.h"
#include "Quorvi/sync/SyncedStores.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/sync/LocalSnapshot.h"

namespace quorvi {

// Records local changes of the stores in the archive as new versions. Small changes are recorded at
// once; large ones, and everything after the start, are compared in the background. Main thread;
// part of AccountSync, whose task scope and other parts outlive the tasks started here.
class LocalCapture {
public:
    // `chosen`: keys of the settings that the user has chosen with this launch. They count as edits
    // even if it is the first launch.
    LocalCapture(const SyncedStores& stores, GuardedArchive& archive, Scheduler& scheduler,
                 TaskScope& tasks, std::vector<std::string_view> chosen);

    // Set before begin(). Called with the ids of new versions; when the stores hold values that the
    // ledger does not; and after a comparison in the background.
    std::function<void(const std::vector<SharedString>&)> onNewVersions;
    std::function<void()> onDifferences;
    std::function<void()> onBackgroundEnd;

    // Captures everything and follows the stores from then on. The archive must be open.
    void begin();
    // Captures the last changes, as far as that needs no background work, and stops following.
    void end();

    // Captures what has changed. Does nothing while busy or while the stores are not ready.
    void capture();
    // The same, resumed when a comparison in the background has ended as well.
    Task<void> captureAll(std::stop_token stop);

    // Whether all local values have been captured once and no comparison is running.
    bool isReady() const { return captured_ && !busy_.isActive(); }
    // The local values of the last capture, if there was one.
    const LocalSnapshot& captured() const { return *captured_; }

    // Nothing is captured while this is active.
    Activity& busy() { return busy_; }
    // After an update of the stores: continues from the values `now`. `expected` is what the stores
    // were to hold and `local` what is known to differ from that: both differences are local edits.
    void continueFrom(LocalSnapshot now, const LocalSnapshot& expected, LocalChanges local);

private:
    // The number of values looked at within one turn of the main thread, a few milliseconds.
    static constexpr std::size_t valuesPerTurn = 1000;

    void captureSoon();
    Task<void> captureInBackground(LocalSnapshot now, std::stop_token stop);
    void captureChosen(const LocalChanges& changes);
    void adoptHeld(LocalChanges& changes);
    void record(std::span<const LocalChange> changes, bool seed);
    void noteDifferences();
    void noteSeeded();

    const SyncedStores& stores_;
    GuardedArchive& archive_;
    Scheduler& scheduler_;
    TaskScope& tasks_;
    const std::vector<std::string_view> chosen_;

    std::optional<LocalSnapshot> captured_;
    bool seeds_ = false;  // the first values of a first launch, older than any other version
    Activity busy_{scheduler_};
    bool isPosted_ = false;
    Timer preferencesSettle_;
    std::vector<Subscription> subscriptions_;
    Lifetime lifetime_;
};

}  // namespace quorvi
