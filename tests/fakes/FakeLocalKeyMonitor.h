#pragma once

#include <memory>
#include <utility>

#include "Quorvi/platform/LocalKeyMonitor.h"

namespace quorvi::test {

// Delivers the key presses of a test as if they happened in a window of this program.
class FakeLocalKeyMonitor : public LocalKeyMonitor {
public:
    Subscription observe(Handler handler) override {
        handler_ = std::make_shared<Handler>(std::move(handler));
        return Subscription(std::shared_ptr<void>(nullptr, [this](void*) { handler_.reset(); }));
    }

    bool isObserved() const { return handler_ != nullptr; }

    // Return whether the event was kept from the window.
    bool press(KeyCode keyCode, std::uint64_t flags, std::optional<std::string> characters) {
        return send({LocalKeyEvent::Type::keyDown, keyCode, flags, std::move(characters)});
    }
    bool changeFlags(KeyCode keyCode, std::uint64_t flags) {
        return send({LocalKeyEvent::Type::flagsChanged, keyCode, flags, std::nullopt});
    }

private:
    bool send(const LocalKeyEvent& event) {
        const auto handler = handler_;
        return handler && (*handler)(event);
    }

    std::shared_ptr<Handler> handler_;
};

}  // namespace quorvi::test
