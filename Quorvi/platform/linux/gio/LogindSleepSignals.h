#pragma once

#include <functional>
#include <memory>

typedef struct _GMainContext GMainContext;

namespace quorvi {

// Hears from logind, over the system bus, that the machine is about to sleep and that it has woken.
// A machine without a system bus never says so, which is no error. Created, destroyed and calling
// back on the thread that runs `context`.
class LogindSleepSignals {
public:
    // `onSignal` is given true before sleep and false after waking.
    LogindSleepSignals(GMainContext* context, std::function<void(bool)> onSignal);
    ~LogindSleepSignals();

private:
    struct Link;
    std::unique_ptr<Link> link_;
};

}  // namespace quorvi
