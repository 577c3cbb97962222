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
    // An equal calendar is dropped: the present one has calculated many days already.
    auto take = lifetime_.guard([this](const Calendar& found) {
        if (!(found == calendar_)) calendar_ = found;
    });
    executor_.run([&scheduler = scheduler_, take = std::move(take)] {
        scheduler.post([take, found = Calendar::system()] { take(found); });
    });
}

}  // namespace quorvi
