#include "Quorvi/platform/linux/posix/StopLimit.h"

#include <csignal>

#include <chrono>

namespace quorvi {

StopLimit::StopLimit() {
    sigevent event{};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGCONT;
    isThere_ = timer_create(CLOCK_MONOTONIC, &event, &timer_) == 0;
}

StopLimit::~StopLimit() {
    if (isThere_) timer_delete(timer_);
}

void StopLimit::renew(Duration limit) {
    if (!isThere_) return;
    const auto nanoseconds = std::chrono::nanoseconds(limit).count();
    constexpr long second = 1'000'000'000;
    itimerspec time{};
    time.it_value = {nanoseconds / second, nanoseconds % second};
    timer_settime(timer_, 0, &time, nullptr);
}

}  // namespace quorvi
