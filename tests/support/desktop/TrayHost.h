#pragma once

#include <chrono>
#include <semaphore>

#include "Quorvi/platform/linux/gio/GLibThread.h"

typedef struct _GDBusConnection GDBusConnection;

namespace quorvi::test {

// A desktop's tray as programs see it over D-Bus, as long as it lives: the watcher that they
// announce their icons to. On a thread of its own.
class TrayHost {
public:
    // Returns when programs can find it.
    TrayHost() { ready_.acquire(); }

    // Waits for an icon that was announced since the last one was waited for or forgotten.
    bool waitForItem(std::chrono::seconds limit = std::chrono::minutes(1)) {
        return announced_.try_acquire_for(limit);
    }
    void forgetItem() {
        while (announced_.try_acquire()) continue;
    }

private:
    void begin();
    void end();

    GLibHandle<GDBusConnection> connection_;
    std::binary_semaphore ready_{0};
    std::counting_semaphore<> announced_{0};
    GLibThread thread_{"tray", [this] { begin(); }, [this] { end(); }};
};

}  // namespace quorvi::test
