#pragma once

#include <sys/types.h>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "QuorviCore/async/Observable.h"

namespace quorvi {

struct RunningApplication {
    pid_t pid = 0;
    std::string name;          // the display name, empty when there is none
    std::uint64_t window = 0;  // which of its windows is active; 0 if the display does not tell

    bool operator==(const RunningApplication&) const = default;
};

// The desktop session. frontmostApplication() is safe from any thread; everything else is for the
// main thread. Nothing blocks or throws.
class Workspace {
public:
    virtual ~Workspace() = default;

    // Returns the application whose window is active, as last reported by the window manager.
    virtual std::optional<RunningApplication> frontmostApplication() const = 0;

    // Returns this program's process identifier.
    virtual pid_t ownPid() const = 0;

    // Observers are called when the machine is about to sleep, or has woken.
    [[nodiscard]] virtual Subscription onWillSleep(std::function<void()> observer) = 0;
    [[nodiscard]] virtual Subscription onDidWake(std::function<void()> observer) = 0;

    // Observers are called when the screen is being locked, perhaps several times for one lock.
    [[nodiscard]] virtual Subscription onScreenLock(std::function<void()> observer) = 0;
};

}  // namespace quorvi
