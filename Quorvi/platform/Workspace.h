#pragma once

#include <sys/types.h>
#include <functional>
#include <optional>
#include <string>

#include "QuorviCore/async/Observable.h"

namespace quorvi {

struct RunningApplication {
    pid_t pid = 0;
    std::string name;  // the display name, empty when there is none

    bool operator==(const RunningApplication&) const = default;
};

// The session around the program. frontmostApplication() is safe from any thread and never blocks;
// the rest belongs to the main thread.
class Workspace {
public:
    virtual ~Workspace() = default;

    // The application whose window is active, as the window manager last said.
    virtual std::optional<RunningApplication> frontmostApplication() const = 0;

    // This program's own process identifier.
    virtual pid_t ownPid() const = 0;

    // The machine is about to sleep, or has woken. Called on the main thread.
    [[nodiscard]] virtual Subscription onWillSleep(std::function<void()> observer) = 0;
    [[nodiscard]] virtual Subscription onDidWake(std::function<void()> observer) = 0;
};

}  // namespace quorvi
