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
// run() is for any thread until the sound thread has ended, the rest for the sound thread itself.
class PulseThread {
public:
    PulseThread();
    ~PulseThread();
    PulseThread(const PulseThread&) = delete;
    PulseThread& operator=(const PulseThread&) = delete;

    void run(std::function<void()> job);
    // On the thread that made it, as does the destructor: runs the jobs that are queued, and those
    // that they queue, and ends the thread.
    void end();

    pa_mainloop_api* api() const;
    [[nodiscard]] Timer after(Duration delay, std::function<void()> work);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi
