#include "Quorvi/platform/linux/wayland/sway/SwayWorkspace.h"

#include <utility>

#include "Quorvi/platform/linux/gio/DescriptorSource.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/wayland/FrontmostWindow.h"
#include "Quorvi/platform/linux/wayland/sway/SwaySocket.h"
#include "Quorvi/platform/linux/wayland/sway/SwayTree.h"

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

    const FrontmostWindow& frontmost() const { return frontmost_; }

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
        frontmost_.show(std::nullopt);
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

    void update() {
        const auto tree = questions_->ask(SwaySocket::Message::tree);
        frontmost_.show(tree ? focusedSwayWindow(*tree) : std::nullopt);
    }

    Scheduler& scheduler_;
    const std::weak_ptr<SessionSignals> signals_;
    // The thread's own.
    std::optional<SwaySocket> questions_, events_;
    std::optional<SessionWatch> session_;
    std::optional<DescriptorSource> input_;
    FrontmostWindow frontmost_;
    std::optional<GLibThread> thread_;
};

SwayWorkspace::SwayWorkspace(Scheduler& scheduler)
    : watcher_(std::make_unique<Watcher>(scheduler, signals_)) {}

SwayWorkspace::~SwayWorkspace() = default;

std::optional<RunningApplication> SwayWorkspace::frontmostApplication() const {
    return watcher_->frontmost().application();
}

std::string SwayWorkspace::frontmostClass() const {
    return watcher_->frontmost().name();
}

}  // namespace quorvi
