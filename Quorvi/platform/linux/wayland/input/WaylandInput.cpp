#include "Quorvi/platform/linux/wayland/input/WaylandInput.h"

#include <utility>

namespace quorvi {

WaylandInput::WaylandInput() {
    const auto end = [this] {
        source_.reset();
        session_.reset();
    };
    thread_.emplace("quorvi-input", [this] { connect(); }, end);
}

WaylandInput::~WaylandInput() = default;

void WaylandInput::connect() {
    session_ = std::make_unique<Session>();
    const auto& connection = session_->connection;
    session_->keyStates.emplace(session_->connection, [this](KeyCode modifier, bool isDown) {
        if (isDown)
            held_ |= bitOf(modifier);
        else
            held_ &= ~bitOf(modifier);
    });
    isAlive_ = VirtualKeyboard::isOffered(connection) || FakeInput::isOffered(connection);
    if (!isAlive_) return session_.reset();
    source_.emplace(session_->connection.fileDescriptor(), [this] { return processEvents(); });
    flush();
}

void WaylandInput::run(std::function<void(Session*)> work, Duration delay) {
    const auto whole = [this, work = std::move(work)] {
        work(session_.get());
        flush();
    };
    thread_->invoke(whole, delay);
}

// Sends what was requested; what was read meanwhile is announced by no descriptor.
void WaylandInput::flush() {
    if (!session_) return;
    while (session_->connection.dispatchQueued()) continue;
    session_->connection.flush();
}

bool WaylandInput::processEvents() {
    const bool isAlive = session_->connection.dispatch();
    if (isAlive) flush();
    if (isAlive && session_->connection.isAlive()) return true;
    isAlive_ = false;
    held_ = 0;
    session_->method.lose();
    session_.reset();
    return false;
}

}  // namespace quorvi
