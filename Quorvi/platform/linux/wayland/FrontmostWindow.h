#pragma once

#include <sys/types.h>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "Quorvi/platform/Workspace.h"

namespace quorvi {

// The window that has the focus, as a compositor describes it. A plain value.
struct FocusedWindow {
    pid_t pid = 0;
    std::string name;  // its program's name for itself: the application id, or the X11 class
    std::uint64_t id = 0;

    bool operator==(const FocusedWindow&) const = default;
};

// The application of the focused window, for any thread, kept by the one that follows the windows.
class FrontmostWindow {
public:
    // That thread's. Publishes the application at once; looking up its name may take longer.
    void show(std::optional<FocusedWindow> window);

    std::optional<RunningApplication> application() const;
    std::string name() const;  // of the focused window; empty if none has the focus

private:
    void publish(std::optional<RunningApplication> application, std::string name);

    // The thread's own.
    std::optional<FocusedWindow> window_;
    std::map<std::string, std::string> names_;  // that have been looked up
    mutable std::mutex mutex_;                  // guards what follows only
    std::optional<RunningApplication> application_;
    std::string name_;
};

}  // namespace quorvi
