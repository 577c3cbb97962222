#include "Quorvi/platform/linux/atspi/AtspiWorkspace.h"

#include <atomic>
#include <map>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiBus.h"
#include "Quorvi/platform/linux/atspi/AtspiFocusFinder.h"
#include "Quorvi/platform/linux/atspi/AtspiFocusTracker.h"
#include "Quorvi/platform/linux/atspi/AtspiPeers.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/posix/ProcessName.h"
#include "Quorvi/platform/linux/xdg/ApplicationName.h"

namespace quorvi {
namespace {

using namespace atspi;
using namespace std::chrono_literals;

constexpr Duration answerTime = 250ms;
constexpr Duration lookTime = 500ms;  // for all applications
constexpr int nameTries = 20;
constexpr Duration settlingTime = 50ms;  // between the window that leaves and the one that comes

// GNOME's panel, overview and window switcher. It takes the focus to switch windows, and says so in
// hundreds of events.
constexpr const char* desktopShell = "gnome-shell";

// The class by which the terminal is known that runs its windows in a process of their own.
std::string classNameOf(const std::string& name) {
    constexpr std::string_view suffix = "-server";
    return name.ends_with(suffix) ? name.substr(0, name.size() - suffix.size()) : name;
}

TimePoint within(Duration time) {
    return std::chrono::steady_clock::now() + time;
}

}  // namespace

// Events come on the bus's thread and are handled, with the questions that they raise, on this
// one's.
class AtspiWorkspace::Watcher final : public BusObserver {
public:
    Watcher(Scheduler& scheduler, std::weak_ptr<SessionSignals> signals)
        : scheduler_(scheduler), signals_(std::move(signals)) {}

    // An event may have been lost: with nothing to show, looks again for the next time.
    std::optional<RunningApplication> frontmost() {
        std::unique_lock lock(mutex_);
        auto application = frontmost_;
        lock.unlock();
        if (!application) lookLater(Duration::zero());
        return application;
    }

    std::string frontmostClass() const {
        std::lock_guard lock(mutex_);
        return class_;
    }

private:
    struct Connection {
        explicit Connection(BusObserver& observer) : bus(observer) {}
        AtspiBus bus;
        AtspiPeers peers{bus};
        AtspiFocusTracker tracker;
        AtspiFocusFinder finder{peers, tracker};
    };

    void begin() {
        session_.emplace(scheduler_, signals_);
        connection_.emplace(*this);
    }
    void end() {
        connection_.reset();
        session_.reset();
    }

    // --- the bus's thread ---

    void focusChanged(const ObjectRef& object, bool focused) override {
        if (!focused) return;
        std::lock_guard lock(mutex_);
        if (object.bus == shown_) return;
        if (!std::exchange(lastFocused_, object.bus).empty()) return;  // one is on its way
        thread_.invoke([this] { considerFocused(); });
    }
    void windowActiveChanged(const ObjectRef& window, bool active) override {
        thread_.invoke([this, window, active] { changeWindow(window, active); });
    }
    void peerLeft(const std::string& bus) override {
        thread_.invoke([this, bus] { forget(bus); });
    }
    void busLost() override {
        thread_.invoke([this] {
            connection_->tracker.clear();
            connection_->peers.forgetAll();
            names_.clear();
            show({});
        });
    }
    void usabilityChanged() override { lookLater(Duration::zero()); }

    // --- this thread ---

    void changeWindow(const ObjectRef& window, bool active) {
        if (isShell(window.bus)) return;
        connection_->tracker.windowActiveChanged(window, active);
        showTracked();
    }

    // The events of windows are lost now and then. Where the focus is said to be, the window tells.
    void considerFocused() {
        std::unique_lock lock(mutex_);
        const auto bus = std::exchange(lastFocused_, {});
        lock.unlock();
        if (!isShell(bus)) adopt({bus}, answerTime);
    }

    void forget(const std::string& bus) {
        connection_->peers.forget(bus);
        connection_->tracker.peerLeft(bus);
        names_.erase(bus);
        showTracked();
    }

    void lookLater(Duration delay) {
        if (isLooking_.exchange(true)) return;
        thread_.invoke(
            [this] {
                isLooking_ = false;
                look();
            },
            delay);
    }

    // At the start, and when nothing is known: who has an active window?
    void look() {
        if (connection_->tracker.activeApplication()) return;
        std::vector<std::string> names;
        for (auto& name : connection_->peers.allNames(within(lookTime)))
            if (!isShell(name)) names.push_back(std::move(name));
        adopt(names, lookTime);
    }

    void adopt(const std::vector<std::string>& names, Duration time) {
        const auto window = connection_->finder.activeWindowIn(names, within(time));
        if (!window) return;
        connection_->tracker.windowActiveChanged(*window, true);
        showTracked();
    }

    bool isShell(const std::string& bus) {
        const auto pid = connection_->peers.process(bus, within(answerTime));
        return pid && processName(*pid) == desktopShell;
    }

    void showTracked() {
        const auto active = connection_->tracker.activeApplication();
        show(active.value_or(std::string()));
        if (!active) lookLater(settlingTime);
    }

    void show(const std::string& bus) {
        {
            std::lock_guard lock(mutex_);
            if (bus == std::exchange(shown_, bus)) return;
        }
        const auto pid =
            bus.empty() ? std::nullopt : connection_->peers.process(bus, within(answerTime));
        if (!pid) return publish(std::nullopt, {});
        const auto known = names_.find(bus);
        if (known != names_.end())
            return publish(RunningApplication{*pid, known->second.display}, known->second.own);
        // At once; its names may take longer.
        const auto process = processName(*pid);
        publish(RunningApplication{*pid, process}, process);
        nameShown(bus, *pid, nameTries);
    }

    // An application that is opening its first window does not answer until it has drawn it.
    void nameShown(const std::string& bus, pid_t pid, int tries) {
        if (bus != shown_) return;
        auto own = readText(connection_->peers.call(
            propertyCall({bus, rootPath}, accessibleInterface, "Name"), within(answerTime)));
        if (!own && tries > 0)
            return thread_.invoke([this, bus, pid, tries] { nameShown(bus, pid, tries - 1); },
                                  answerTime);
        if (!own || own->empty()) own = processName(pid);
        auto display = installedApplicationName(*own, *own);
        if (display.empty()) display = *own;
        const auto& names = names_[bus] = {std::move(display), *std::move(own)};
        publish(RunningApplication{pid, names.display}, names.own);
    }

    void publish(std::optional<RunningApplication> application, const std::string& ownName) {
        std::lock_guard lock(mutex_);
        frontmost_ = std::move(application);
        class_ = classNameOf(ownName);
    }

    struct Names {
        std::string display, own;
    };

    Scheduler& scheduler_;
    const std::weak_ptr<SessionSignals> signals_;
    // The thread's own.
    std::optional<SessionWatch> session_;
    std::optional<Connection> connection_;
    std::map<std::string, Names> names_;  // of applications that have been shown
    std::atomic<bool> isLooking_ = false;
    mutable std::mutex mutex_;  // guards what follows only
    std::string shown_;         // on the bus; empty for none; written by the thread alone
    std::string lastFocused_;   // until it has been considered
    std::optional<RunningApplication> frontmost_;
    std::string class_;
    GLibThread thread_{"quorvi-session", [this] { begin(); }, [this] { end(); }};
};

AtspiWorkspace::AtspiWorkspace(Scheduler& scheduler)
    : watcher_(std::make_unique<Watcher>(scheduler, signals_)) {}

AtspiWorkspace::~AtspiWorkspace() = default;

std::optional<RunningApplication> AtspiWorkspace::frontmostApplication() const {
    return watcher_->frontmost();
}

std::string AtspiWorkspace::frontmostClass() const {
    return watcher_->frontmostClass();
}

}  // namespace quorvi
