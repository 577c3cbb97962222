#include "Quorvi/history/SystemCalendar.h"

#include <chrono>
#include <cstdint>
#include <tuple>
#include <utility>

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// A timer of many hours may be a little early.
constexpr Duration afterMidnight = 500ms;

}  // namespace

SystemCalendar::SystemCalendar(ClockChanges& changes, Executor& executor, Scheduler& scheduler,
                               std::function<Calendar()> lookUp)
    : executor_(executor),
      scheduler_(scheduler),
      lookUp_(std::move(lookUp)),
      calendar_(lookUp_()),
      changes_(changes.onChange([this] { lookUpAgain(); })) {}

void SystemCalendar::lookUpAgain() {
    if (!calendar_.isInUse()) return;
    auto take = lifetime_.guard([this](const Calendar& found) {
        // An equal calendar is dropped: the present one has calculated many days already.
        if (!(found == calendar_)) calendar_ = found;
        announceDay();
    });
    executor_.run([&scheduler = scheduler_, lookUp = lookUp_, take = std::move(take)] {
        auto found = lookUp();
        std::ignore = found.zone();  // reads the files
        scheduler.post([take, found = std::move(found)] { take(found); });
    });
}

void SystemCalendar::announceDay() {
    waitForMidnight();
    newDays_.notify();
}

void SystemCalendar::waitForMidnight() {
    const auto now = scheduler_.date();
    const auto seconds =
        calendar_.day(now).end.secondsSinceReferenceDate - now.secondsSinceReferenceDate;
    midnight_ = scheduler_.after(
        std::chrono::milliseconds(static_cast<std::int64_t>(seconds * 1000)) + afterMidnight,
        [this] { announceDay(); });
}

}  // namespace quorvi
