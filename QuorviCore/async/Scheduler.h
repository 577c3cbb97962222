#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "QuorviCore/async/Date.h"

namespace quorvi {

using Duration = std::chrono::nanoseconds;
using TimePoint = std::chrono::steady_clock::time_point;

// A pending call, cancelled when its Timer is destroyed or reassigned. Main thread only.
class Timer {
public:
    struct Node {
        virtual ~Node() = default;
    };

    Timer() = default;
    explicit Timer(std::unique_ptr<Node> node) : node_(std::move(node)) {}

    void cancel() { node_.reset(); }

private:
    std::unique_ptr<Node> node_;
};

// The main thread's event loop: the model's only source of time and its only way to run something
// later. Tests advance a virtual one. after() and every() are for the main thread; the rest is
// thread-safe.
class Scheduler {
public:
    virtual ~Scheduler() = default;

    // Monotonic time, for delays and deadlines.
    virtual TimePoint now() const = 0;

    // Wall-clock time, for records that are kept.
    virtual Date date() const = 0;

    // Runs `work` on the main thread after the current turn, in the order posted. Thread-safe.
    virtual void post(std::function<void()> work) = 0;

    // Runs `work` once, `delay` from now, unless the returned timer is gone by then.
    [[nodiscard]] virtual Timer after(Duration delay, std::function<void()> work) = 0;

    // Runs `work` every `period`, first one period from now, while the returned timer lives. Ticks
    // missed while the thread was busy are skipped.
    [[nodiscard]] virtual Timer every(Duration period, std::function<void()> work) = 0;
};

}  // namespace quorvi
