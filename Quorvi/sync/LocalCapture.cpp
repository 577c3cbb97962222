#include "Quorvi/sync/LocalCapture.h"

#include <algorithm>
#include <span>
#include <utility>

#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr auto preferencesDelay = 300ms;

// Stored from the first launch until the archive has the values that launch began with.
const auto seedingKey = setting::iCloudSyncSeeding.key();

}  // namespace

LocalCapture::LocalCapture(const SyncedStores& stores, GuardedArchive& archive,
                           Scheduler& scheduler, TaskScope& tasks,
                           std::vector<std::string_view> chosen)
    : stores_(stores),
      archive_(archive),
      scheduler_(scheduler),
      tasks_(tasks),
      chosen_(std::move(chosen)) {
    // True in the first launch itself, false in a later one that has to make up for it.
    auto& preferences = stores_.preferences;
    const bool wasCutShort = preferences.contains(seedingKey);
    seeds_ = wasCutShort || !Settings(preferences).get(setting::hasLaunchedQuorvi);
    if (seeds_) preferences.setBoolean(seedingKey, !wasCutShort);
}

void LocalCapture::begin() {
    const auto& ledger = archive_->ledger();
    // What a first launch that was cut short has fetched does not make its values edits.
    const bool wasCutShort = stores_.preferences.boolean(seedingKey) == false;
    seeds_ = seeds_ && (wasCutShort || (ledger.items().empty() && !ledger.hasBaseline()));
    capture();
    subscriptions_.push_back(stores_.history.onChange([this] { captureSoon(); }));
    subscriptions_.push_back(stores_.corrections.onChange([this] { captureSoon(); }));
    subscriptions_.push_back(stores_.preferences.onChange([this] {
        preferencesSettle_ = scheduler_.after(preferencesDelay, [this] { capture(); });
    }));
}

void LocalCapture::end() {
    preferencesSettle_.cancel();
    subscriptions_.clear();
    // What a comparison in the background has not recorded yet is found again at the next start.
    if (captured_) capture();
}

// In the next turn: the stores call their observers while they change.
void LocalCapture::captureSoon() {
    if (std::exchange(isPosted_, true)) return;
    scheduler_.post(lifetime_.guard([this] {
        isPosted_ = false;
        capture();
    }));
}

void LocalCapture::capture() {
    if (!archive_.isUsable() || busy_.isActive() || !stores_.areReady()) return;
    auto now = stores_.snapshot();
    if (captured_ && now.isSharedWith(*captured_)) return;
    if (!captured_ || now.distanceFrom(*captured_) > valuesPerTurn) {
        tasks_.start([this, &now](std::stop_token stop) {
            return captureInBackground(std::move(now), stop);
        });
        return;
    }
    const auto changes = now.changesSince(*captured_, archive_->ledger());
    captured_ = std::move(now);
    record(changes, false);
    noteDifferences();
}

Task<void> LocalCapture::captureAll(std::stop_token stop) {
    capture();
    auto ending = busy_.ended(stop);
    co_await ending;
}

Task<void> LocalCapture::captureInBackground(LocalSnapshot now, std::stop_token stop) {
    {
        const Activity::Running running(busy_);
        auto comparing = archive_->changesOf(now, stop);
        auto changes = co_await comparing;
        if (seeds_) captureChosen(changes);
        adoptHeld(changes);
        const std::span all(changes);
        for (std::size_t at = 0; at < all.size(); at += valuesPerTurn) {
            record(all.subspan(at, std::min(valuesPerTurn, all.size() - at)), seeds_);
            auto turn = sleepFor(scheduler_, 0s, stop);
            co_await turn;
        }
        seeds_ = false;
        captured_ = std::move(now);
        noteDifferences();
        if (stores_.preferences.contains(seedingKey)) noteSeeded();
    }
    capture();  // what has changed meanwhile
    onBackgroundEnd();
}

void LocalCapture::captureChosen(const LocalChanges& changes) {
    for (const auto& change : changes) {
        const auto id = change.id.view();
        if (id.starts_with(syncPrefix::setting) &&
            std::ranges::count(chosen_, id.substr(syncPrefix::setting.size())))
            record(std::span(&change, 1), false);
    }
}

// Values from other machines that were written into the stores shortly before a crash, and not
// recorded in the archive. A new version of them would override later changes of others.
void LocalCapture::adoptHeld(LocalChanges& changes) {
    std::erase_if(changes, [this](const LocalChange& change) {
        const auto* item = archive_->ledger().item(change.id);
        if (item == nullptr || item->payload != change.payload) return false;
        archive_->adopt(change);
        return true;
    });
}

void LocalCapture::record(std::span<const LocalChange> changes, bool seed) {
    const auto ids = archive_->capture(changes, seed, scheduler_.date());
    if (!ids.empty()) onNewVersions(ids);
}

// A stale copy of something that another machine has deleted may have been found.
void LocalCapture::noteDifferences() {
    if (!archive_->ledger().differences().empty()) onDifferences();
}

// Not before the archive has the values: a launch that ends earlier is repeated as the first one.
void LocalCapture::noteSeeded() {
    archive_.persist([this] { stores_.preferences.remove(seedingKey); });
}

void LocalCapture::continueFrom(LocalSnapshot now, const LocalSnapshot& expected,
                                LocalChanges local) {
    if (now.distanceFrom(expected) <= valuesPerTurn) {
        const auto changes = now.changesSince(expected, archive_->ledger());
        local.insert(local.end(), changes.begin(), changes.end());
        captured_ = std::move(now);
    } else {
        captured_.reset();  // the next capture compares everything, in the background
    }
    record(local, false);
}

}  // namespace quorvi
