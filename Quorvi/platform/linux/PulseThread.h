#pragma once

#include <functional>
#include <memory>

#include "QuorviCore/async/Scheduler.h"

struct pa_mainloop_api;

namespace quorvi {

// The thread on which everything is done that concerns the sound server: libpulse is not
// thread-safe, and with a thread of its own no other thread ever waits for a lock that is held
// while libpulse works. It sleeps while there is nothing to do.
//
// run() is for any thread, the rest for the sound thread itself. The destructor, on the thread that
// made it, runs the jobs that are queued and ends the thread.
class PulseThread {
public:
    PulseThread();
    ~PulseThread();
    PulseThread(const PulseThread&) = delete;
    PulseThread& operator=(const PulseThread&) = delete;

    void run(std::function<void()> job);

    pa_mainloop_api* api() const;
    [[nodiscard]] Timer after(Duration delay, std::function<void()> work);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi
