#pragma once

#include <chrono>
#include <exception>
#include <optional>
#include <string>
#include <utility>

#include "Quorvi/platform/linux/LoopScheduler.h"
#include "QuorviCore/async/Task.h"

namespace quorvi::test {

// A task that a test runs beside others: what came of it, once it has ended.
template <class T>
class Running {
public:
    explicit Running(Task<T> task) : task_(collect(std::move(task))) { task_.start(); }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    bool ended() const { return ended_; }
    const std::optional<T>& value() const { return value_; }
    bool cancelled() const { return cancelled_; }
    const std::string& failure() const { return failure_; }  // what() of the exception

private:
    Task<void> collect(Task<T> task) {
        try {
            value_ = co_await task;
        } catch (const Cancelled&) {
            cancelled_ = true;
        } catch (const std::exception& error) {
            failure_ = error.what();
        }
        ended_ = true;
    }

    bool ended_ = false;
    bool cancelled_ = false;
    std::optional<T> value_;
    std::string failure_;
    Task<void> task_;
};

// Runs the loop until the task has ended; false when it hasn't within two minutes.
template <class T>
bool await(LoopScheduler& scheduler, const Running<T>& running) {
    return scheduler.runUntil([&] { return running.ended(); }, std::chrono::minutes(2));
}

}  // namespace quorvi::test
