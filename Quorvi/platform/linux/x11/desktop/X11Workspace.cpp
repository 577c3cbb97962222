#include "Quorvi/platform/linux/x11/desktop/X11Workspace.h"

#include <glib-unix.h>
#include <glib.h>
#include <pthread.h>
#include <unistd.h>

#include <mutex>
#include <thread>
#include <utility>

#include "Quorvi/platform/linux/gio/LogindSleepSignals.h"
#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "Quorvi/platform/linux/x11/desktop/X11ActiveApplication.h"

namespace quorvi {
namespace {

constexpr guint reconnectMilliseconds = 1000;

}  // namespace

struct X11Workspace::Signals {
    Observable willSleep;
    Observable didWake;
};

// The thread: one GLib context that waits for the X connection and for the system bus.
class X11Workspace::Watcher {
public:
    Watcher(Scheduler& scheduler, std::weak_ptr<Signals> signals)
        : scheduler_(scheduler),
          signals_(std::move(signals)),
          context_(g_main_context_new()),
          loop_(g_main_loop_new(context_, FALSE)),
          connection_(std::make_unique<X11Connection>()) {
        // So that the application is known as soon as the workspace exists.
        if (connection_->isAlive()) remember(X11ActiveApplication(*connection_).look());
        thread_ = std::thread([this] { run(); });
        pthread_setname_np(thread_.native_handle(), "quorvi-session");
    }

    ~Watcher() {
        // Quitting happens inside the loop: a loop that has not started yet would miss it.
        callInLoop(0, [](gpointer self) -> gboolean {
            g_main_loop_quit(static_cast<Watcher*>(self)->loop_);
            return G_SOURCE_REMOVE;
        });
        thread_.join();
        g_main_loop_unref(loop_);
        g_main_context_unref(context_);
    }

    std::optional<RunningApplication> frontmost() const {
        std::lock_guard lock(mutex_);
        return frontmost_;
    }

private:
    void run() {
        {
            LogindSleepSignals sleep(context_, [this](bool sleeping) { announce(sleeping); });
            watch();
            g_main_loop_run(loop_);
        }
        disconnect();
        // The cancelled call to the bus still has its answer to deliver.
        while (g_main_context_iteration(context_, FALSE)) continue;
    }

    void watch() {
        if (!connection_->isAlive()) return retryLater();
        active_ = std::make_unique<X11ActiveApplication>(*connection_);
        constexpr std::uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection_->get(), connection_->root(), XCB_CW_EVENT_MASK,
                                     &changes);
        input_ = g_unix_fd_source_new(connection_->fileDescriptor(),
                                      static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
        const GUnixFDSourceFunc readable = [](gint, GIOCondition, gpointer self) -> gboolean {
            return static_cast<Watcher*>(self)->processEvents() ? G_SOURCE_CONTINUE
                                                                : G_SOURCE_REMOVE;
        };
        g_source_set_callback(input_,
                              reinterpret_cast<GSourceFunc>(reinterpret_cast<void*>(readable)),
                              this, nullptr);
        g_source_attach(input_, context_);
        update();
        processEvents();
    }

    void disconnect() {
        if (input_ != nullptr) {
            g_source_destroy(input_);
            g_source_unref(input_);
            input_ = nullptr;
        }
        active_.reset();
        connection_.reset();
        remember(std::nullopt);
    }

    void retryLater() {
        disconnect();
        callInLoop(reconnectMilliseconds, [](gpointer self) -> gboolean {
            auto* watcher = static_cast<Watcher*>(self);
            watcher->connection_ = std::make_unique<X11Connection>();
            watcher->watch();
            return G_SOURCE_REMOVE;
        });
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

    // Which application it is counts at once; its name may take longer.
    void update() {
        remember(active_->look());
        if (active_->lookUpName()) remember(active_->look());
    }

    void remember(std::optional<RunningApplication> application) {
        std::lock_guard lock(mutex_);
        frontmost_ = std::move(application);
    }

    void announce(bool sleeping) {
        scheduler_.post([weak = signals_, sleeping] {
            if (const auto signals = weak.lock())
                (sleeping ? signals->willSleep : signals->didWake).notify();
        });
    }

    void callInLoop(guint milliseconds, GSourceFunc call) {
        auto* source = milliseconds == 0 ? g_idle_source_new() : g_timeout_source_new(milliseconds);
        g_source_set_callback(source, call, this, nullptr);
        g_source_attach(source, context_);
        g_source_unref(source);
    }

    Scheduler& scheduler_;
    std::weak_ptr<Signals> signals_;
    GMainContext* context_;
    GMainLoop* loop_;
    // These three belong to the thread. The first connection is made before it starts, while no
    // toolkit can be connecting at the same time (libXau is not thread-safe).
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<X11ActiveApplication> active_;
    GSource* input_ = nullptr;
    mutable std::mutex mutex_;  // guards frontmost_ only
    std::optional<RunningApplication> frontmost_;
    std::thread thread_;
};

X11Workspace::X11Workspace(Scheduler& scheduler)
    : signals_(std::make_shared<Signals>()),
      watcher_(std::make_unique<Watcher>(scheduler, signals_)) {}

X11Workspace::~X11Workspace() = default;

std::optional<RunningApplication> X11Workspace::frontmostApplication() const {
    return watcher_->frontmost();
}

pid_t X11Workspace::ownPid() const {
    return getpid();
}

Subscription X11Workspace::onWillSleep(std::function<void()> observer) {
    return signals_->willSleep.subscribe(std::move(observer));
}

Subscription X11Workspace::onDidWake(std::function<void()> observer) {
    return signals_->didWake.subscribe(std::move(observer));
}

}  // namespace quorvi
