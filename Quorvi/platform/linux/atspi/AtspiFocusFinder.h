#pragma once

#include <sys/types.h>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiFocusTracker.h"
#include "Quorvi/platform/linux/atspi/AtspiPeers.h"
#include "Quorvi/platform/linux/atspi/AtspiRoles.h"

namespace quorvi::atspi {

// Finds the focused object and the active window: first by the tracked events, each checked with
// its application; then, as for a field that got the focus before this program started, by a
// bounded walk from its active window. Never by the application's own search, whose cost nobody
// bounds. One thread at a time.
class AtspiFocusFinder {
public:
    AtspiFocusFinder(AtspiPeers& peers, AtspiFocusTracker& tracker)
        : peers_(peers), tracker_(tracker) {}

    // The bus names of a process's applications. Of those behind a sandbox's proxy the one with the
    // active window, so `pid` must be the process that has the active window of the display.
    std::vector<std::string> namesOf(pid_t pid, TimePoint deadline);
    std::optional<ObjectRef> focusedObjectOf(pid_t pid, TimePoint deadline);
    std::optional<ObjectRef> activeWindowOf(pid_t pid, TimePoint deadline);
    // The same of the applications with these bus names.
    std::optional<ObjectRef> activeWindowIn(const std::vector<std::string>& names,
                                            TimePoint deadline);

    // In the application that has the active window.
    std::optional<ObjectRef> focusedObject(TimePoint deadline);

private:
    struct Candidate {
        ObjectRef object;
        Role role = Role::invalid;
        States states;
    };

    std::optional<ObjectRef> focusedIn(const std::string& bus, TimePoint deadline);
    std::optional<ObjectRef> search(const ObjectRef& window, TimePoint deadline);
    ObjectRef innermost(const Candidate& focused, TimePoint deadline);
    std::vector<Candidate> walk(const ObjectRef& window, TimePoint deadline);
    std::vector<Candidate> describe(const std::vector<ObjectRef>& objects, TimePoint deadline);
    std::vector<ObjectRef> childrenOf(const std::vector<ObjectRef>& objects, TimePoint deadline);

    AtspiPeers& peers_;
    AtspiFocusTracker& tracker_;
};

}  // namespace quorvi::atspi
