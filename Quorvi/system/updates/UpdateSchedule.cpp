#include "Quorvi/system/updates/UpdateSchedule.h"

#include <chrono>
#include <cmath>
#include <utility>

#include "QuorviCore/settings/Setting.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

const auto lastCheckKey = setting::lastUpdateCheck.key();
constexpr double day = 24.0 * 60 * 60;
// A program that has just been started has better things to do.
constexpr Duration afterStart = 1min;
// The scheduler's time stands still while the computer sleeps, so one long timer would not do.
constexpr Duration interval = 1h;

}  // namespace

UpdateSchedule::UpdateSchedule(Scheduler& scheduler, Preferences& preferences,
                               std::function<void()> look)
    : scheduler_(scheduler), preferences_(preferences), look_(std::move(look)) {}

void UpdateSchedule::start() {
    timer_ = scheduler_.after(afterStart, [this] {
        timer_ = scheduler_.every(interval, [this] {
            if (isDue()) look_();
        });
        if (isDue()) look_();
    });
}

void UpdateSchedule::noteChecked() {
    const auto now = std::floor(scheduler_.date().secondsSinceReferenceDate);
    preferences_.setInteger(lastCheckKey, static_cast<std::int64_t>(now));
}

bool UpdateSchedule::isDue() const {
    const auto last = preferences_.integer(lastCheckKey);
    if (!last) return true;
    const auto since = scheduler_.date().secondsSinceReferenceDate - static_cast<double>(*last);
    // A date in the future is the trace of a clock that was wrong.
    return since < 0 || since >= day;
}

}  // namespace quorvi
