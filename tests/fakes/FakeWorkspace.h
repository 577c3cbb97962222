#pragma once

#include <mutex>

#include "Quorvi/platform/Workspace.h"

namespace quorvi::test {

// A session whose active application, sleep and lock the test controls.
class FakeWorkspace : public Workspace {
public:
    static constexpr pid_t quorviPid = 4711;

    std::optional<RunningApplication> frontmostApplication() const override {
        std::lock_guard lock(mutex_);
        return frontmost_;
    }
    pid_t ownPid() const override { return quorviPid; }
    [[nodiscard]] Subscription onWillSleep(std::function<void()> observer) override {
        return willSleep_.subscribe(std::move(observer));
    }
    [[nodiscard]] Subscription onDidWake(std::function<void()> observer) override {
        return didWake_.subscribe(std::move(observer));
    }
    [[nodiscard]] Subscription onScreenLock(std::function<void()> observer) override {
        return screenLock_.subscribe(std::move(observer));
    }

    void setFrontmost(std::optional<RunningApplication> application) {
        std::lock_guard lock(mutex_);
        frontmost_ = std::move(application);
    }
    void sleep() { willSleep_.notify(); }
    void wake() { didWake_.notify(); }
    void lockScreen() { screenLock_.notify(); }

private:
    mutable std::mutex mutex_;
    std::optional<RunningApplication> frontmost_;
    Observable willSleep_;
    Observable didWake_;
    Observable screenLock_;
};

}  // namespace quorvi::test
