#pragma once

#include <functional>
#include <memory>

namespace quorvi {

// Reports that the machine is about to sleep and that it has woken, as logind announces it on the
// system bus. Never calls back on a machine without a system bus. Created, destroyed and calling
// back on one thread, which runs its default GLib context (see GLibThread).
class LogindSleepSignals {
public:
    // `onSignal` is given true before sleep and false after waking.
    explicit LogindSleepSignals(std::function<void(bool)> onSignal);
    ~LogindSleepSignals();

private:
    struct Link;
    std::unique_ptr<Link> link_;
};

}  // namespace quorvi
