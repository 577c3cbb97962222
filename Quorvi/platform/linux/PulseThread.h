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
// run() is for any thread, api() and after() for the sound thread itself. finish(), also part of the
// destructor and on the thread that made the object, runs the jobs that are queued and ends the
// thread; those jobs may still use the object.
class PulseThread {
public:
    PulseThread();
    ~PulseThread();
    PulseThread(const PulseThread&) = delete;
    PulseThread& operator=(const PulseThread&) = delete;

    void run(std::function<void()> job);
    void finish();

    pa_mainloop_api* api() const;
    [[nodiscard]] Timer after(Duration delay, std::function<void()> work);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi
