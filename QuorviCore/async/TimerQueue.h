#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The timers of a scheduler, by due time, then by order of creation. The scheduler says what time
// it is and calls what is due. One thread; timers may outlive the queue.
class TimerQueue {
public:
    // A timer that runs `work` at `due` and then every `period`; once if that is zero.
    [[nodiscard]] Timer add(TimePoint due, Duration period, std::function<void()> work);

    // When the first timer is due; nullopt if there is none.
    std::optional<TimePoint> firstDue() const;

    // Removes the first timer and returns its work. One that repeats is due again a period after
    // `last`. There must be a timer.
    std::function<void()> takeFirst(TimePoint last);

    // The periods of all timers, ascending.
    std::vector<Duration> periods() const;

private:
    struct Entry {
        std::function<void()> work;
        Duration period{};
    };
    struct Entries {
        using Key = std::pair<TimePoint, std::uint64_t>;  // due time, id
        std::map<Key, Entry> byDue;
        std::map<std::uint64_t, TimePoint> dueById;
        std::uint64_t lastId = 0;

        void insert(std::uint64_t id, TimePoint due, Entry entry);
        void erase(std::uint64_t id);
    };
    struct Node;

    std::shared_ptr<Entries> entries_ = std::make_shared<Entries>();
};

}  // namespace quorvi
