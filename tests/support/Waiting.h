#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <variant>

#include "QuorviCore/async/Task.h"

namespace quorvi::test {

// A task that a test runs beside others: what came of it, once it has ended. Dropping it drops the
// task.
template <class T>
class Running {
public:
    using Value = std::conditional_t<std::is_void_v<T>, std::monostate, T>;

    explicit Running(Task<T> task) : task_(collect(std::move(task))) { task_.start(); }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    bool ended() const { return ended_; }
    const std::optional<Value>& value() const { return value_; }
    bool cancelled() const { return cancelled_; }
    const std::string& failure() const { return failure_; }  // what() of the exception

private:
    Task<void> collect(Task<T> task) {
        try {
            if constexpr (std::is_void_v<T>) {
                co_await task;
                value_.emplace();
            } else {
                value_ = co_await task;
            }
        } catch (const Cancelled&) {
            cancelled_ = true;
        } catch (const std::exception& error) {
            failure_ = error.what();
        }
        ended_ = true;
    }

    bool ended_ = false;
    bool cancelled_ = false;
    std::optional<Value> value_;
    std::string failure_;
    Task<void> task_;
};

// Runs a loop until the condition, which may change on another thread, holds. The limit is for a
// test that would hang, and no measure.
template <class Loop>
bool until(Loop& loop, const std::function<bool()>& condition,
           std::chrono::seconds limit = std::chrono::seconds(60)) {
    const auto tick = loop.every(std::chrono::milliseconds(10), [] {});
    return loop.runUntil(condition, limit);
}

// Runs the loop until the task has ended.
template <class Loop, class T>
bool await(Loop& loop, const Running<T>& running) {
    return until(loop, [&] { return running.ended(); }, std::chrono::seconds(120));
}

// Asks until the condition holds, without a loop.
inline bool eventually(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return condition();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

}  // namespace quorvi::test
