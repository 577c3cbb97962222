#include "Quorvi/platform/linux/wayland/sway/SwayWorkspace.h"

#include <unistd.h>

#include <map>
#include <mutex>
#include <utility>

#include "Quorvi/platform/linux/gio/DescriptorSource.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/posix/ProcessName.h"
#include "Quorvi/platform/linux/wayland/sway/SwaySocket.h"
#include "Quorvi/platform/linux/wayland/sway/SwayTree.h"
#include "Quorvi/platform/linux/xdg/ApplicationName.h"

namespace quorvi {
namespace {

constexpr Duration reconnectDelay = std::chrono::seconds(1);

}  // namespace

// The thread: one GLib context that waits for sway and for the buses.
class SwayWorkspace::Watcher {
public:
    Watcher(Scheduler& scheduler, std::weak_ptr<SessionSignals> signals)
        : scheduler_(scheduler), signals_(std::move(signals)) {
        thread_.emplace("quorvi-session", [this] { begin(); }, [this] { end(); });
    }

    std::pair<std::optional<RunningApplication>, std::string> frontmost() const {
        std::lock_guard lock(mutex_);
        return {frontmost_, class_};
    }

private:
    void begin() {
        watch();
        session_.emplace(scheduler_, signals_);
    }

    void end() {
        session_.reset();
        disconnect();
    }

    // The subscription comes before the first look, so that no change falls in between.
    void watch() {
        questions_.emplace();
        events_.emplace();
        if (!events_->subscribe(R"(["window","workspace"])")) return retryLater();
        input_.emplace(events_->fileDescriptor(), [this] { return processEvents(); });
        update();
    }

    void disconnect() {
        input_.reset();
        events_.reset();
        questions_.reset();
        remember(std::nullopt, {});
    }

    void retryLater() {
        disconnect();
        thread_->invoke([this] { watch(); }, reconnectDelay);
    }

    bool processEvents() {
        const bool isAlive = events_->readEvents([](auto, const auto&) {});
        if (isAlive) update();
        if (isAlive && questions_->isAlive()) return true;
        retryLater();
        return false;
    }

    // Publishes the application at once; looking up its name may take longer.
    void update() {
        const auto tree = questions_->ask(SwaySocket::Message::tree);
        const auto window = tree ? focusedSwayWindow(*tree) : std::nullopt;
        if (window == window_ && tree) return;
        window_ = window;
        if (!window) return remember(std::nullopt, {});
        const auto known = names_.find(window->name);
        if (known != names_.end())
            return remember(RunningApplication{window->pid, known->second, window->id},
                            window->name);
        remember(RunningApplication{window->pid,
                                    window->name.empty() ? processName(window->pid) : window->name,
                                    window->id},
                 window->name);
        if (window->name.empty()) return;
        auto name = installedApplicationName(window->name, window->name);
        if (name.empty()) name = window->name;
        names_.emplace(window->name, name);
        remember(RunningApplication{window->pid, std::move(name), window->id}, window->name);
    }

    void remember(std::optional<RunningApplication> application, std::string className) {
        std::lock_guard lock(mutex_);
        frontmost_ = std::move(application);
        class_ = std::move(className);
    }

    Scheduler& scheduler_;
    const std::weak_ptr<SessionSignals> signals_;
    // The thread's own.
    std::optional<SwaySocket> questions_, events_;
    std::optional<SessionWatch> session_;
    std::optional<DescriptorSource> input_;
    std::optional<SwayWindow> window_;
    std::map<std::string, std::string> names_;  // that have been looked up
    mutable std::mutex mutex_;                  // guards what follows only
    std::optional<RunningApplication> frontmost_;
    std::string class_;
    std::optional<GLibThread> thread_;
};

SwayWorkspace::SwayWorkspace(Scheduler& scheduler)
    : signals_(std::make_shared<SessionSignals>()),
      watcher_(std::make_unique<Watcher>(scheduler, signals_)) {}

SwayWorkspace::~SwayWorkspace() = default;

std::optional<RunningApplication> SwayWorkspace::frontmostApplication() const {
    return watcher_->frontmost().first;
}

std::string SwayWorkspace::frontmostClass() const {
    return watcher_->frontmost().second;
}

pid_t SwayWorkspace::ownPid() const {
    return getpid();
}

Subscription SwayWorkspace::onWillSleep(std::function<void()> observer) {
    return signals_->willSleep.subscribe(std::move(observer));
}

Subscription SwayWorkspace::onDidWake(std::function<void()> observer) {
    return signals_->didWake.subscribe(std::move(observer));
}

Subscription SwayWorkspace::onScreenLock(std::function<void()> observer) {
    return signals_->screenLock.subscribe(std::move(observer));
}

}  // namespace quorvi
