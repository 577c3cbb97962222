#pragma once

#include <sys/types.h>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiBus.h"
#include "Quorvi/platform/linux/atspi/AtspiVariant.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi::atspi {

struct Call {
    ObjectRef object;
    const char* interface;
    const char* method;
    Variant arguments;
};

Call propertyCall(const ObjectRef& object, const char* interface, const char* name);

// Calls the applications on the accessibility bus, and caches facts about them. A call blocks until
// the answer or the deadline; calls made together wait together. Each has its own time, whatever
// became of those before it: a field that stalls for a moment is asked again and found unchanged.
// One thread at a time; forget() and forgetAll() are for any thread.
class AtspiPeers {
public:
    explicit AtspiPeers(const AtspiBus& bus) : bus_(bus) {}

    // Returns one reply per call, in order; null for calls that failed or timed out.
    std::vector<Variant> callAll(std::vector<Call> calls, TimePoint deadline);
    Variant call(Call call, TimePoint deadline);

    // Answered by the bus itself, which never hangs.
    std::optional<pid_t> process(const std::string& bus, TimePoint deadline);

    // The bus names of a process's applications; usually one.
    std::vector<std::string> namesOf(pid_t pid, TimePoint deadline);
    // The same of applications for which the bus knows the proxy of their sandbox in place of their
    // process. All that this process's sandbox does not exclude; none if it is in none.
    std::vector<std::string> proxiedNamesOf(pid_t pid, TimePoint deadline);
    std::vector<std::string> allNames(TimePoint deadline);

    // Whether the application uses Chromium's toolkit, or any web browser's.
    bool isChromium(const std::string& bus, TimePoint deadline) {
        return toolkit(bus, deadline) == "Chromium";
    }
    bool isBrowser(const std::string& bus, TimePoint deadline) {
        const auto name = toolkit(bus, deadline);
        return name == "Chromium" || name == "Gecko";
    }

    void forget(const std::string& bus);
    void forgetAll();

private:
    struct Peer {
        std::optional<pid_t> pid;
        std::optional<std::string> toolkit;
    };

    std::string toolkit(const std::string& bus, TimePoint deadline);

    const AtspiBus& bus_;
    std::mutex mutex_;  // guards peers_
    std::map<std::string, Peer> peers_;
};

}  // namespace quorvi::atspi
