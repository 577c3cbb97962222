#pragma once

#include <functional>
#include <thread>

#include "Quorvi/platform/linux/gio/GLibHandles.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// A thread with a GLib main context of its own, which is the thread's default. It runs `begin`,
// then the context's loop, then `end`. Destruction ends the loop and waits for the thread;
// operations that `end` has cancelled still report back.
class GLibThread {
public:
    GLibThread(const char* name, std::function<void()> begin, std::function<void()> end);
    ~GLibThread();
    GLibThread(const GLibThread&) = delete;
    GLibThread& operator=(const GLibThread&) = delete;

    // Runs `work` on the thread after the delay; not at all once the loop has ended. Any thread.
    void invoke(std::function<void()> work, Duration delay = Duration::zero());

private:
    void run(const std::function<void()>& begin, const std::function<void()>& end);

    const GLibHandle<GMainContext> context_;
    const GLibHandle<GMainLoop> loop_;
    std::thread thread_;
};

}  // namespace quorvi
