#pragma once

#include <sys/types.h>
#include <chrono>
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
// the answer or the deadline; calls made together wait together. An application that let a call
// time out is not called again for a short while, so that a hung one costs a series of queries only
// one time-out. One thread at a time; forget() and forgetAll() are for any thread.
class AtspiPeers {
public:
    explicit AtspiPeers(const AtspiBus& bus,
                        Duration restAfterTimeout = std::chrono::milliseconds(250))
        : bus_(bus), restAfterTimeout_(restAfterTimeout) {}

    // Returns one reply per call, in order; null for calls that failed or timed out.
    std::vector<Variant> callAll(std::vector<Call> calls, TimePoint deadline);
    Variant call(Call call, TimePoint deadline);

    // Answered by the bus itself, which never hangs.
    std::optional<pid_t> process(const std::string& bus, TimePoint deadline);

    // The bus names of a process's applications; usually one.
    std::vector<std::string> namesOf(pid_t pid, TimePoint deadline);
    std::vector<std::string> allNames(TimePoint deadline);

    // Whether the application uses Chromium's toolkit.
    bool isChromium(const std::string& bus, TimePoint deadline);

    void forget(const std::string& bus);
    void forgetAll();

private:
    struct Peer {
        std::optional<pid_t> pid;
        std::optional<std::string> toolkit;
        TimePoint restUntil{};
    };

    bool isResting(const std::string& bus, TimePoint now);
    void rest(const std::string& bus, TimePoint until);

    const AtspiBus& bus_;
    const Duration restAfterTimeout_;
    std::mutex mutex_;  // guards peers_
    std::map<std::string, Peer> peers_;
};

}  // namespace quorvi::atspi
