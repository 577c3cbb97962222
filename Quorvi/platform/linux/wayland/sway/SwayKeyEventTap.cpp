#include "Quorvi/platform/linux/wayland/sway/SwayKeyEventTap.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <utility>

#include "Quorvi/platform/linux/keyboard/TapInbox.h"
#include "Quorvi/platform/linux/wayland/sway/SwayShortcuts.h"

namespace quorvi {
namespace {

// A hook that is installed again at once, as after a reset, finds its keys as they were.
constexpr auto unbindDelay = std::chrono::milliseconds(200);

}  // namespace

// What is shared with the input's thread.
struct SwayKeyEventTap::Connection {
    enum class State { connecting, bound, lost };

    std::shared_ptr<SwayShortcuts> shortcuts;
    std::atomic<State> state{State::connecting};
    std::atomic<std::uint64_t> installs{0};

    void use(std::shared_ptr<TapInbox> inbox) {
        std::lock_guard lock(mutex_);
        inbox_ = std::move(inbox);
    }
    void tell(const TapEvent& event) {
        std::unique_lock lock(mutex_);
        const auto inbox = inbox_;
        lock.unlock();
        if (inbox) inbox->add(event);
    }
    void lose() {
        if (state.exchange(State::lost) == State::bound)
            tell({.type = TapEventType::tapDisabledByUserInput});
    }
    // Returns whether sway holds the keys from now on.
    bool bind(std::vector<SwallowedKey> keys) {
        if (!hasBegun_ && state == State::connecting) hasBegun_ = shortcuts->begin();
        if (!hasBegun_) lose();
        if (state == State::lost) return false;
        shortcuts->bind(std::move(keys));
        return state.exchange(State::bound) == State::connecting;
    }

private:
    std::mutex mutex_;  // guards inbox_
    std::shared_ptr<TapInbox> inbox_;
    bool hasBegun_ = false;  // the thread's own
};

SwayKeyEventTap::SwayKeyEventTap(Scheduler& scheduler, WaylandInput& input,
                                 std::function<void()> onValid)
    : scheduler_(scheduler), input_(input), onValid_(std::move(onValid)) {}

SwayKeyEventTap::~SwayKeyEventTap() {
    remove();
    if (connection_) disconnect();
}

std::shared_ptr<SwayKeyEventTap::Connection> SwayKeyEventTap::connect() {
    auto connection = std::make_shared<Connection>();
    connection->shortcuts = std::make_shared<SwayShortcuts>(
        input_, [of = connection.get()](const TapEvent& event) { of->tell(event); },
        [weak = std::weak_ptr(connection)] {
            if (const auto alive = weak.lock()) alive->lose();
        });
    return connection;
}

void SwayKeyEventTap::disconnect() {
    input_.run([connection = std::exchange(connection_, nullptr)](WaylandInput::Session*) {
        connection->shortcuts->end();
    });
}

bool SwayKeyEventTap::install(std::function<TapVerdict(const TapEvent&)> handler) {
    remove();
    if (!input_.isAlive()) return false;
    if (connection_ && connection_->state == Connection::State::lost) disconnect();
    if (!connection_) connection_ = connect();
    inbox_ = std::make_shared<TapInbox>(scheduler_, std::move(handler));
    ++connection_->installs;
    connection_->use(inbox_);
    input_.run(
        [connection = connection_, keys = keys(), onValid = onValid_](WaylandInput::Session*) {
            if (connection->bind(keys)) onValid();
        });
    isEnabled_ = true;
    return true;
}

void SwayKeyEventTap::remove() {
    isEnabled_ = false;
    if (!inbox_) return;
    inbox_->close();
    inbox_.reset();
    const auto unbind = [connection = connection_,
                         install = connection_->installs.load()](WaylandInput::Session*) {
        if (connection->installs == install) connection->shortcuts->bind({});
    };
    input_.run(unbind, unbindDelay);
}

bool SwayKeyEventTap::isValid() const {
    return inbox_ && connection_->state == Connection::State::bound && input_.isAlive();
}

void SwayKeyEventTap::setEnabled(bool enabled) {
    if (!inbox_ || enabled == isEnabled_) return;
    isEnabled_ = enabled;
    if (!enabled) return inbox_->mute();
    input_.run([inbox = inbox_](WaylandInput::Session*) { inbox->unmute(); });
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
    if (!inbox_) return;
    input_.run([shortcuts = connection_->shortcuts, keys = keys()](WaylandInput::Session*) {
        shortcuts->bind(keys);
    });
}

bool SwayKeyEventTap::keyIsDown(KeyCode keyCode) const {
    return inbox_ && connection_->shortcuts->keyIsDown(keyCode);
}

}  // namespace quorvi
