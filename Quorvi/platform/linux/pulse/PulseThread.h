#pragma once

#include <functional>
#include <memory>

#include "QuorviCore/async/Scheduler.h"

struct pa_mainloop_api;

namespace quorvi {

// The thread of all calls to libpulse, which is not thread-safe; so no other thread ever waits for
// a lock that libpulse's work holds. Sleeps while there is nothing to do.
//
// run() is for any thread until the sound thread has ended, the rest for the sound thread.
class PulseThread {
public:
    PulseThread();
    ~PulseThread();
    PulseThread(const PulseThread&) = delete;
    PulseThread& operator=(const PulseThread&) = delete;

    void run(std::function<void()> job);
    // Runs the queued jobs, and those that they queue, then ends the thread. Belongs to the thread
    // that created the object, like the destructor.
    void end();

    pa_mainloop_api* api() const;
    [[nodiscard]] Timer after(Duration delay, std::function<void()> work);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi
