#include "Quorvi/platform/linux/x11/desktop/X11Workspace.h"

#include <mutex>
#include <utility>

#include "Quorvi/platform/linux/gio/DescriptorSource.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "Quorvi/platform/linux/x11/desktop/X11ActiveApplication.h"

namespace quorvi {
namespace {

constexpr Duration reconnectDelay = std::chrono::seconds(1);

}  // namespace

// The thread: one GLib context that waits for the X connection and for the buses.
class X11Workspace::Watcher {
public:
    Watcher(Scheduler& scheduler, std::weak_ptr<SessionSignals> signals)
        : scheduler_(scheduler),
          signals_(std::move(signals)),
          connection_(std::make_unique<X11Connection>()) {
        // So that the application is known as soon as the workspace exists.
        if (connection_->isAlive()) remember(X11ActiveApplication(*connection_).look());
        thread_.emplace("quorvi-session", [this] { begin(); }, [this] { end(); });
    }

    std::optional<RunningApplication> frontmost() const {
        std::lock_guard lock(mutex_);
        return frontmost_;
    }

private:
    void begin() {
        session_.emplace(scheduler_, signals_);
        watch();
    }

    void end() {
        session_.reset();
        disconnect();
    }

    void watch() {
        if (!connection_->isAlive()) return retryLater();
        active_ = std::make_unique<X11ActiveApplication>(*connection_);
        constexpr std::uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection_->get(), connection_->root(), XCB_CW_EVENT_MASK,
                                     &changes);
        input_.emplace(connection_->fileDescriptor(), [this] { return processEvents(); });
        update();
        processEvents();
    }

    void disconnect() {
        input_.reset();
        active_.reset();
        connection_.reset();
        remember(std::nullopt);
    }

    void retryLater() {
        disconnect();
        const auto reconnect = [this] {
            connection_ = std::make_unique<X11Connection>();
            watch();
        };
        thread_->invoke(reconnect, reconnectDelay);
    }

    // False when the connection is lost. Looking something up may read further events into the
    // queue, where no descriptor announces them, and so may flushing, which therefore comes first:
    // it goes on until the queue is empty.
    bool processEvents() {
        xcb_flush(connection_->get());
        bool changed = true;
        while (changed) {
            changed = false;
            while (const auto event = connection_->nextEvent())
                changed = concernsActiveWindow(*event) || changed;
            if (changed) update();
        }
        if (connection_->isAlive()) return true;
        retryLater();
        return false;
    }

    bool concernsActiveWindow(const xcb_generic_event_t& event) const {
        return xcbEventType(event) == XCB_PROPERTY_NOTIFY &&
               reinterpret_cast<const xcb_property_notify_event_t&>(event).atom ==
                   active_->activeWindowAtom();
    }

    // Publish the application at once; looking up its name may take longer.
    void update() {
        remember(active_->look());
        if (active_->lookUpName()) remember(active_->look());
    }

    void remember(std::optional<RunningApplication> application) {
        std::lock_guard lock(mutex_);
        frontmost_ = std::move(application);
    }

    Scheduler& scheduler_;
    const std::weak_ptr<SessionSignals> signals_;
    // The thread's own. The first connection is made before it starts, while no toolkit can be
    // connecting at the same time (libXau is not thread-safe).
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<X11ActiveApplication> active_;
    std::optional<SessionWatch> session_;
    std::optional<DescriptorSource> input_;
    mutable std::mutex mutex_;  // guards frontmost_ only
    std::optional<RunningApplication> frontmost_;
    std::optional<GLibThread> thread_;
};

X11Workspace::X11Workspace(Scheduler& scheduler)
    : watcher_(std::make_unique<Watcher>(scheduler, signals_)) {}

X11Workspace::~X11Workspace() = default;

std::optional<RunningApplication> X11Workspace::frontmostApplication() const {
    return watcher_->frontmost();
}

}  // namespace quorvi
