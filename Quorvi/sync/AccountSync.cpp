#include "Quorvi/sync/AccountSync.h"

#include <algorithm>
#include <span>
#include <utility>

#include "Quorvi/dictation/PreferenceKeys.h"

// Starting, taking in local changes, keeping the archive, and ending.
namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr auto tickPeriod = 2s;
constexpr unsigned ticksPerPass = 8;
constexpr auto localChangeDelay = 1s;
constexpr auto preferencesDelay = 300ms;

}  // namespace

AccountSync::AccountSync(Environment environment)
    : environment_(std::move(environment)), tasks_(environment_.scheduler) {
    auto& preferences = environment_.preferences;
    // A state that knows of a value that the stores have not kept would take it for deleted, or
    // changed back, after a crash.
    environment_.archive.flushStores = [flushHistory = environment_.history.flusher(),
                                        flushPreferences = preferences.flusher()] {
        return flushHistory() && flushPreferences();
    };
    enabled_ = preferences.boolean(enabledKey).value_or(true);
    // True in the first launch itself, false in one that has to make up for it.
    const bool wasCutShort = preferences.contains(seedingKey);
    seeds_ = wasCutShort || !preferences.boolean(preferenceKey::hasLaunched).value_or(false);
    if (seeds_) preferences.setBoolean(seedingKey, !wasCutShort);
    if (!enabled_) status_ = say::syncOff();
    tasks_.start([this](std::stop_token stop) { return open(stop); });
}

AccountSync::~AccountSync() = default;

Task<void> AccountSync::open(std::stop_token stop) {
    try {
        auto opening = SyncArchive::open(environment_.archive, stop);
        archive_ = co_await opening;
    } catch (const std::exception&) {
        diskHealthy_ = false;
    }
    if (!diskHealthy_) {
        setStatus(say::syncDataUnreadable());
        co_return;
    }
    const auto& state = archive_->state();
    lastSynced_ = state.lastSynced;
    pendingCount_ = state.pending.size();
    // What a first launch that was cut short has fetched does not make its values edits.
    const bool wasCutShort = environment_.preferences.boolean(seedingKey) == false;
    seeds_ =
        seeds_ && (wasCutShort || (state.ledger.items().empty() && !state.ledger.hasBaseline()));
    changed();
    capture();
    subscribe();
    if (!enabled_) co_return;
    auto connecting = connect(stop);
    co_await connecting;
}

void AccountSync::subscribe() {
    // The stores tell of a change while they make it.
    const auto captureSoon = [this] {
        if (std::exchange(captureIsPosted_, true)) return;
        inNextTurn([this] {
            captureIsPosted_ = false;
            capture();
        });
    };
    subscriptions_.push_back(environment_.history.onChange(captureSoon));
    subscriptions_.push_back(environment_.corrections.onChange(captureSoon));
    subscriptions_.push_back(environment_.preferences.onChange([this] {
        preferencesSettle_ = environment_.scheduler.after(preferencesDelay, [this] { capture(); });
    }));
    subscriptions_.push_back(environment_.database.onRemoteChange([this] { syncNow(); }));
    tickTimer_ = environment_.scheduler.every(tickPeriod, [this] { tick(); });
}

void AccountSync::tick() {
    capture();
    applyIfReady();
    if (++ticks_ % ticksPerPass == 0 && enabled_) syncNow();
}

// A store that has failed to load must not be taken for an empty one.
bool AccountSync::storesAreReady() const {
    const auto& history = environment_.history;
    return !history.isLoading() && !history.persistenceError() &&
           !environment_.corrections.persistenceError() && environment_.preferences.couldBeRead();
}

LocalSnapshot AccountSync::snapshot() const {
    return {environment_.history.records(), environment_.corrections.rules(),
            environment_.model.syncSettings()};
}

void AccountSync::capture() {
    if (!archive_ || !diskHealthy_ || shutDown_ || applying_ || capturing_.isActive() ||
        !storesAreReady())
        return;
    auto now = snapshot();
    if (captured_ && now.isSharedWith(*captured_)) return;
    if (!captured_ || now.distanceFrom(*captured_) > valuesPerTurn) {
        tasks_.start([this, &now](std::stop_token stop) {
            return captureInBackground(std::move(now), stop);
        });
        return;
    }
    const auto changes = now.changesSince(*captured_, archive_->ledger());
    captured_ = std::move(now);
    noteCaptured(archive_->capture(changes, false, environment_.scheduler.date()));
    noteDifferences();
}

// A stale copy of what another machine has deleted was found: the stores have to lose it again.
void AccountSync::noteDifferences() {
    if (!archive_->ledger().differences().empty()) needsApply_ = true;
}

Task<void> AccountSync::captureInBackground(LocalSnapshot now, std::stop_token stop) {
    {
        const Activity::Running running(capturing_);
        auto comparing = archive_->changesOf(now, stop);
        auto changes = co_await comparing;
        if (seeds_) captureChosen(changes);
        adoptHeld(changes);
        const std::span all(changes);
        for (std::size_t at = 0; at < all.size(); at += valuesPerTurn) {
            const auto some = all.subspan(at, std::min(valuesPerTurn, all.size() - at));
            noteCaptured(archive_->capture(some, seeds_, environment_.scheduler.date()));
            auto turn = sleepFor(environment_.scheduler, 0s, stop);
            co_await turn;
        }
        seeds_ = false;
        captured_ = std::move(now);
        noteDifferences();
        if (environment_.preferences.contains(seedingKey)) noteSeeded();
    }
    // What has changed meanwhile, and what had to wait for it.
    capture();
    applyIfReady();
}

// What was written into the stores shortly before a crash, which the archive does not know: a new
// version would take precedence over what others have made of it since.
void AccountSync::adoptHeld(LocalChanges& changes) {
    std::erase_if(changes, [this](const LocalChange& change) {
        const auto* item = archive_->ledger().item(change.id);
        if (item == nullptr || item->payload != change.payload) return false;
        archive_->adopt(change);
        return true;
    });
}

// Not before the archive has them: a launch that comes too soon is the first one once more.
void AccountSync::noteSeeded() {
    archive_->persist([this](bool saved) {
        persisted(saved);
        if (saved) environment_.preferences.remove(seedingKey);
    });
}

void AccountSync::captureChosen(const LocalChanges& changes) {
    for (const auto& change : changes) {
        const auto id = change.id.view();
        if (!id.starts_with(syncPrefix::setting) ||
            !std::ranges::count(environment_.chosen, id.substr(syncPrefix::setting.size())))
            continue;
        noteCaptured(
            archive_->capture(std::span(&change, 1), false, environment_.scheduler.date()));
    }
}

Task<void> AccountSync::captureAll(std::stop_token stop) {
    capture();
    auto ending = capturing_.ended(stop);
    co_await ending;
}

void AccountSync::noteCaptured(const std::vector<SharedString>& ids) {
    if (ids.empty()) return;
    for (const auto& id : ids) addPending(id);
    ++generation_;
    persist();
    schedulePending();
    if (enabled_)
        localSync_ = environment_.scheduler.after(localChangeDelay, [this] { syncNow(); });
}

void AccountSync::addPending(const SharedString& id) {
    archive_->addPending(id);
    unscheduled_.push_back(id);
}

void AccountSync::persist() {
    if (!archive_ || !diskHealthy_) return;
    archive_->persist([this](bool saved) { persisted(saved); });
}

void AccountSync::persisted(bool saved) {
    if (!diskHealthy_) return;
    if (saved) {
        if (std::exchange(pendingCount_, archive_->state().pending.size()) != pendingCount_)
            changed();
        return;
    }
    diskHealthy_ = false;
    setStatus(say::syncNotSaved());
    stop();
}

void AccountSync::setEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    environment_.preferences.setBoolean(enabledKey, enabled);
    changed();
    inNextTurn([this, enabled] {
        if (shutDown_ || enabled != enabled_) return;
        if (enabled) {
            tasks_.start([this](std::stop_token stop) { return connect(stop); });
        } else {
            stop();
            setStatus(say::syncOff());
        }
    });
}

void AccountSync::shutdown() {
    if (shutDown_) return;
    tickTimer_.cancel();
    preferencesSettle_.cancel();
    subscriptions_.clear();
    // What is being worked out in the background is found again at the next start.
    if (captured_) capture();
    shutDown_ = true;
    stop();
    tasks_.cancelAll();
    if (archive_ && diskHealthy_) archive_->flush();
}

void AccountSync::inNextTurn(std::function<void()> work) {
    environment_.scheduler.post([alive = std::weak_ptr(alive_), work = std::move(work)] {
        if (alive.lock()) work();
    });
}

void AccountSync::setStatus(Message status) {
    if (status == status_) return;
    status_ = std::move(status);
    changed();
}

}  // namespace quorvi
