#pragma once

#include <functional>
#include <stop_token>
#include <type_traits>
#include <utility>

#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Future.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// Suspends for `delay`. Throws Cancelled as soon as `stop` is triggered.
Task<void> sleepFor(Scheduler& scheduler, Duration delay, std::stop_token stop);

// Throws Cancelled if `stop` was triggered.
void throwIfStopped(const std::stop_token& stop);

// Runs `work` on `executor` and resumes on the main thread with its result or exception. A stop
// ends the wait with Cancelled; the job itself still runs to its end.
template <class F>
Task<std::invoke_result_t<F>> inBackground(Executor& executor, Scheduler& scheduler, F work,
                                           std::stop_token stop = {}) {
    using T = std::invoke_result_t<F>;
    Promise<T> promise(scheduler);
    auto future = promise.future(std::move(stop));
    executor.run([promise, work = std::move(work)]() mutable {
        try {
            if constexpr (std::is_void_v<T>) {
                work();
                promise.resolve();
            } else {
                promise.resolve(work());
            }
        } catch (...) {
            promise.reject(std::current_exception());
        }
    });
    co_return co_await future;
}

}  // namespace quorvi
