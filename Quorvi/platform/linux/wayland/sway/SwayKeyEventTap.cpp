#include "Quorvi/platform/linux/wayland/sway/SwayKeyEventTap.h"

#include <atomic>
#include <chrono>
#include <future>
#include <utility>

#include "Quorvi/platform/linux/keyboard/TapInbox.h"
#include "Quorvi/platform/linux/wayland/sway/SwayShortcuts.h"

namespace quorvi {
namespace {

constexpr auto patience = std::chrono::seconds(2);

}  // namespace

// What one installation shares with the input's thread.
struct SwayKeyEventTap::Connection {
    std::shared_ptr<TapInbox> inbox;
    std::shared_ptr<SwayShortcuts> shortcuts;
    std::atomic<bool> isAlive{true};
};

SwayKeyEventTap::SwayKeyEventTap(Scheduler& scheduler, WaylandInput& input)
    : scheduler_(scheduler), input_(input) {}

SwayKeyEventTap::~SwayKeyEventTap() {
    remove();
}

bool SwayKeyEventTap::install(std::function<TapVerdict(const TapEvent&)> handler) {
    remove();
    if (!input_.isAlive() || !SwaySocket().isAlive()) return false;
    auto connection = std::make_shared<Connection>();
    connection->inbox = std::make_shared<TapInbox>(scheduler_, std::move(handler));
    const auto lost = [weak = std::weak_ptr(connection)] {
        const auto alive = weak.lock();
        if (!alive || !alive->isAlive.exchange(false)) return;
        alive->inbox->add({.type = TapEventType::tapDisabledByUserInput});
    };
    connection->shortcuts = std::make_shared<SwayShortcuts>(
        input_, [inbox = connection->inbox](const TapEvent& event) { inbox->add(event); }, lost);
    // The keys hold from the first moment: sway answers within a millisecond, or not at all.
    const auto ready = std::make_shared<std::promise<bool>>();
    input_.run([shortcuts = connection->shortcuts, keys = keys(), ready](WaylandInput::Session*) {
        const bool hasBegun = shortcuts->begin();
        if (hasBegun) shortcuts->bind(keys);
        ready->set_value(hasBegun);
    });
    auto answer = ready->get_future();
    if (answer.wait_for(patience) != std::future_status::ready || !answer.get()) {
        input_.run(
            [shortcuts = connection->shortcuts](WaylandInput::Session*) { shortcuts->end(); });
        return false;
    }
    connection_ = std::move(connection);
    isEnabled_ = true;
    return true;
}

void SwayKeyEventTap::remove() {
    isEnabled_ = false;
    if (!connection_) return;
    connection_->inbox->close();
    input_.run([shortcuts = connection_->shortcuts](WaylandInput::Session*) { shortcuts->end(); });
    connection_.reset();
}

bool SwayKeyEventTap::isValid() const {
    return connection_ && connection_->isAlive && input_.isAlive();
}

void SwayKeyEventTap::setEnabled(bool enabled) {
    if (!connection_ || enabled == isEnabled_) return;
    isEnabled_ = enabled;
    if (!enabled) return connection_->inbox->mute();
    input_.run([inbox = connection_->inbox](WaylandInput::Session*) { inbox->unmute(); });
}

void SwayKeyEventTap::setSwallowed(std::vector<SwallowedKey> keys) {
    swallowed_ = std::move(keys);
    declare();
}

void SwayKeyEventTap::setQuietModifier(std::optional<KeyCode> modifier) {
    quietModifier_ = modifier;
    declare();
}

// A lone modifier is a key to sway like any other.
std::vector<SwallowedKey> SwayKeyEventTap::keys() const {
    auto keys = swallowed_;
    if (quietModifier_) keys.push_back({*quietModifier_, 0});
    return keys;
}

void SwayKeyEventTap::declare() {
    if (!connection_) return;
    input_.run([shortcuts = connection_->shortcuts, keys = keys()](WaylandInput::Session*) {
        shortcuts->bind(keys);
    });
}

bool SwayKeyEventTap::keyIsDown(KeyCode keyCode) const {
    return connection_ && connection_->shortcuts->keyIsDown(keyCode);
}

}  // namespace quorvi
