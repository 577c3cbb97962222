#include "Quorvi/platform/linux/gio/GioNetwork.h"

#include <gio/gio.h>

#include <utility>

#include "Quorvi/platform/linux/gio/GLibThread.h"

namespace quorvi {

class GioNetwork::Watcher {
public:
    Watcher(Scheduler& scheduler, std::weak_ptr<Observable> returns)
        : scheduler_(scheduler),
          returns_(std::move(returns)),
          thread_("quorvi-network", [this] { begin(); }, [this] { end(); }) {}

private:
    // Asking for the monitor may wait for NetworkManager.
    void begin() {
        monitor_ = g_network_monitor_get_default();
        isThere_ = g_network_monitor_get_network_available(monitor_);
        handler_ = g_signal_connect(monitor_, "network-changed", G_CALLBACK(&changed), this);
    }

    void end() { g_signal_handler_disconnect(monitor_, handler_); }

    static void changed(GNetworkMonitor*, gboolean isThere, gpointer watcher) {
        auto& self = *static_cast<Watcher*>(watcher);
        if (std::exchange(self.isThere_, isThere != FALSE) || !isThere) return;
        self.scheduler_.post([weak = self.returns_] {
            if (const auto returns = weak.lock()) returns->notify();
        });
    }

    Scheduler& scheduler_;
    const std::weak_ptr<Observable> returns_;
    GNetworkMonitor* monitor_ = nullptr;  // GIO's own; this thread's, as the next two
    gulong handler_ = 0;
    bool isThere_ = false;
    GLibThread thread_;
};

GioNetwork::GioNetwork(Scheduler& scheduler)
    : scheduler_(scheduler), returns_(std::make_shared<Observable>()) {}

GioNetwork::~GioNetwork() = default;

Subscription GioNetwork::onReturn(std::function<void()> observer) {
    if (!watcher_) watcher_ = std::make_unique<Watcher>(scheduler_, returns_);
    return returns_->subscribe(std::move(observer));
}

}  // namespace quorvi
