#include "tests/fakes/VirtualScheduler.h"

#include <algorithm>
#include <utility>

namespace quorvi::test {

Date VirtualScheduler::date() const {
    return {800'000'000.0 +
            std::chrono::duration<double>(now_.time_since_epoch() + dateAhead_).count()};
}

void VirtualScheduler::settle() {
    advance(Duration::zero());
}

void VirtualScheduler::advance(Duration by) {
    const auto end = now_ + by;
    for (;;) {
        while (!posted_.empty()) {
            auto work = std::move(posted_.front());
            posted_.pop_front();
            work();
        }
        const auto due = timers_.firstDue();
        if (!due || *due > end) break;
        now_ = std::max(now_, *due);
        timers_.takeFirst (*due)();
    }
    now_ = std::max(now_, end);
}

}  // namespace quorvi::test
