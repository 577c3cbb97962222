#pragma once

#include <utility>

#include "Quorvi/platform/DesktopShortcut.h"

namespace quorvi::test {

// A desktop that keeps the shortcut itself. It does at once what the user wants of its settings.
class FakeDesktopShortcut : public DesktopShortcut {
public:
    State state() const override { return state_; }
    void setListed(bool listed) override {
        state_.isListed = listed;
        changes_.notify();
    }
    Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }
    void become(State state) {
        state_ = std::move(state);
        changes_.notify();
    }

private:
    State state_;
    Observable changes_;
};

}  // namespace quorvi::test
