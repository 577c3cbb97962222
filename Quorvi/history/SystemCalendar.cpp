#include "Quorvi/history/SystemCalendar.h"

#include <chrono>
#include <utility>

namespace quorvi {

namespace {

constexpr auto freshness = std::chrono::seconds(30);

}  // namespace

SystemCalendar::SystemCalendar(Executor& executor, Scheduler& scheduler)
    : executor_(executor), scheduler_(scheduler), lookedUp_(scheduler.now()) {}

Calendar SystemCalendar::get() {
    if (scheduler_.now() - lookedUp_ > freshness) lookUp();
    return calendar_;
}

void SystemCalendar::lookUp() {
    lookedUp_ = scheduler_.now();
    executor_.run([this, &scheduler = scheduler_, alive = std::weak_ptr<bool>(alive_)] {
        scheduler.post([this, alive, found = Calendar::system()] {
            // An equal one is not taken: the present one knows many days already.
            if (!alive.expired() && !(found == calendar_)) calendar_ = found;
        });
    });
}

}  // namespace quorvi
