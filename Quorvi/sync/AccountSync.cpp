#include "Quorvi/sync/AccountSync.h"

#include <utility>

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr auto tickPeriod = 2s;
constexpr unsigned ticksPerPass = 8;

}  // namespace

AccountSync::AccountSync(Environment environment)
    : stores_(environment.stores),
      scheduler_(environment.scheduler),
      archive_(archiveEnvironment(environment)),
      capture_(stores_, archive_, scheduler_, tasks_, std::move(environment.chosen)),
      updater_(stores_, archive_, capture_, scheduler_, tasks_),
      items_(archive_, capture_, updater_, scheduler_),
      session_(sessionEnvironment(environment.database, std::move(environment.address)),
               Settings(stores_.preferences).get(setting::iCloudSyncEnabled)),
      tasks_(scheduler_) {
    if (!enabled()) status_ = say::syncOff();
    connectParts();
    tasks_.start([this](std::stop_token stop) { return open(stop); });
}

AccountSync::~AccountSync() = default;

// The values that a state refers to are written before it: after a crash, values that the stores
// have lost would read as deleted, or changed back, by the user.
SyncArchive::Environment AccountSync::archiveEnvironment(Environment& environment) {
    auto archive = environment.archive;
    archive.flushStores = [flushHistory = environment.stores.history.flusher(),
                           flushPreferences = environment.stores.preferences.flusher()] {
        return flushHistory() && flushPreferences();
    };
    return archive;
}

CloudSession::Environment AccountSync::sessionEnvironment(CloudDatabase* database,
                                                          std::string address) {
    return {.database = database,
            .address = std::move(address),
            .archive = archive_,
            .capture = capture_,
            .updater = updater_,
            .items = items_,
            .scheduler = scheduler_,
            .tasks = tasks_,
            .report = [this](Message status) { setStatus(std::move(status)); },
            .onChange = [this] { changes_.notify(); }};
}

void AccountSync::connectParts() {
    archive_.onSaved = [this] { noteSaved(); };
    archive_.onFailure = [this] {
        setStatus(say::syncNotSaved());
        session_.stop();
    };
    capture_.onNewVersions = [this](const auto& ids) { send(ids); };
    capture_.onDifferences = [this] { updater_.need(); };
    capture_.onBackgroundEnd = [this] { updater_.updateIfPossible(); };
    updater_.onUpdated = [this] { items_.offerPending(); };
    items_.canRun = [this] { return session_.canRun(); };
    items_.onStatus = [this](Message status) { setStatus(std::move(status)); };
    items_.onAccountChange = [this] { session_.reconnect(); };
    items_.onReset = [this] {
        setStatus(say::syncCloudReset());
        setEnabled(false);
    };
}

Task<void> AccountSync::open(std::stop_token stop) {
    auto opening = archive_.open(stop);
    const bool isOpen = co_await opening;
    if (!isOpen) {
        setStatus(say::syncDataUnreadable());
        co_return;
    }
    pendingCount_ = archive_->state().pending.size();
    changes_.notify();
    capture_.begin();
    tickTimer_ = scheduler_.every(tickPeriod, [this] { tick(); });
    auto beginning = session_.begin(stop);
    co_await beginning;
}

void AccountSync::send(const std::vector<SharedString>& ids) {
    updater_.invalidate();
    for (const auto& id : ids) items_.addPending(id);
    archive_.persist();
    items_.offerPending();
    session_.passSoon();
}

void AccountSync::tick() {
    capture_.capture();
    updater_.updateIfPossible();
    if (++ticks_ % ticksPerPass == 0 && enabled()) syncNow();
}

void AccountSync::noteSaved() {
    const auto pending = archive_->state().pending.size();
    if (std::exchange(pendingCount_, pending) != pending) changes_.notify();
}

void AccountSync::setEnabled(bool enabled) {
    if (enabled == session_.isEnabled()) return;
    session_.setEnabled(enabled);
    Settings(stores_.preferences).set(setting::iCloudSyncEnabled, enabled);
    changes_.notify();
}

std::optional<Date> AccountSync::lastSynced() const {
    return archive() ? archive()->state().lastSynced : std::nullopt;
}

void AccountSync::shutdown() {
    if (std::exchange(isShutDown_, true)) return;
    end();
    archive_.close();
}

void AccountSync::retire() {
    end();
    archive_.closeInBackground();
}

void AccountSync::end() {
    tickTimer_.cancel();
    capture_.end();
    session_.end();
    tasks_.cancelAll();
}

void AccountSync::setStatus(Message status) {
    if (status == status_) return;
    status_ = std::move(status);
    changes_.notify();
}

}  // namespace quorvi
