#include "Quorvi/platform/linux/wayland/kwin/PlasmaWorkspace.h"

#include <utility>

#include "Quorvi/platform/linux/gio/DescriptorSource.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/wayland/FrontmostWindow.h"
#include "Quorvi/platform/linux/wayland/kwin/PlasmaWindows.h"

namespace quorvi {
namespace {

constexpr Duration reconnectDelay = std::chrono::seconds(1);

}  // namespace

// The thread: one GLib context that waits for KWin and for the buses.
class PlasmaWorkspace::Watcher {
public:
    Watcher(Scheduler& scheduler, std::weak_ptr<SessionSignals> signals)
        : scheduler_(scheduler), signals_(std::move(signals)) {
        thread_.emplace("quorvi-session", [this] { begin(); }, [this] { end(); });
    }

    const FrontmostWindow& frontmost() const { return frontmost_; }

private:
    struct Connection {
        WaylandConnection wayland;
        PlasmaWindows windows{wayland};
    };

    void begin() {
        watch();
        session_.emplace(scheduler_, signals_);
    }

    void end() {
        session_.reset();
        disconnect();
    }

    void watch() {
        connection_.emplace();
        auto& wayland = connection_->wayland;
        // Twice: the windows, then what each of them is.
        if (!wayland.synchronise() || !wayland.synchronise()) return retryLater();
        input_.emplace(wayland.fileDescriptor(), [this] { return processEvents(); });
        update();
    }

    void disconnect() {
        input_.reset();
        connection_.reset();
        frontmost_.show(std::nullopt);
    }

    void retryLater() {
        disconnect();
        thread_->invoke([this] { watch(); }, reconnectDelay);
    }

    // Nothing that has been read stays unseen: the descriptor would not tell of it again.
    bool processEvents() {
        auto& wayland = connection_->wayland;
        if (!wayland.dispatch()) {
            retryLater();
            return false;
        }
        wayland.flush();
        while (wayland.dispatchQueued()) continue;
        update();
        return true;
    }

    void update() { frontmost_.show(connection_->windows.active()); }

    Scheduler& scheduler_;
    const std::weak_ptr<SessionSignals> signals_;
    // The thread's own.
    std::optional<Connection> connection_;
    std::optional<SessionWatch> session_;
    std::optional<DescriptorSource> input_;
    FrontmostWindow frontmost_;
    std::optional<GLibThread> thread_;
};

PlasmaWorkspace::PlasmaWorkspace(Scheduler& scheduler)
    : watcher_(std::make_unique<Watcher>(scheduler, signals_)) {}

PlasmaWorkspace::~PlasmaWorkspace() = default;

std::optional<RunningApplication> PlasmaWorkspace::frontmostApplication() const {
    return watcher_->frontmost().application();
}

std::string PlasmaWorkspace::frontmostClass() const {
    return watcher_->frontmost().name();
}

}  // namespace quorvi
