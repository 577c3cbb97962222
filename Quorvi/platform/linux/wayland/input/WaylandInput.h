#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include "Quorvi/platform/linux/gio/DescriptorSource.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/wayland/WaylandConnection.h"
#include "Quorvi/platform/linux/wayland/input/InputMethod.h"
#include "Quorvi/platform/linux/wayland/input/VirtualKeyboard.h"
#include "Quorvi/platform/linux/wayland/kwin/FakeInput.h"
#include "Quorvi/platform/linux/wayland/kwin/KeyStates.h"

namespace quorvi {

// What gives input to other programs, on one connection and one thread, which does nothing else:
// while it has the keyboard, every key of the user's waits for it. One connection, because the keys
// of its own virtual keyboards pass its own grab, and the seat has room for one input method.
// Created and destroyed on the main thread.
class WaylandInput {
public:
    // What exists during the connection, for the thread.
    struct Session {
        WaylandConnection connection;
        InputMethod method{connection};
        // Made at the first paste, if the compositor has the one or the other.
        std::unique_ptr<VirtualKeyboard> pasting;
        std::unique_ptr<FakeInput> fake;
        std::optional<KeyStates> keyStates;
    };

    // Connects on its thread.
    WaylandInput();
    ~WaylandInput();
    WaylandInput(const WaylandInput&) = delete;
    WaylandInput& operator=(const WaylandInput&) = delete;

    // Whether the compositor takes keys from this program, as far as is known. Any thread.
    bool isAlive() const { return isAlive_; }

    // Whether KWin says that the user holds this modifier. Any thread.
    bool isHeld(KeyCode modifier) const { return (held_ & bitOf(modifier)) != 0; }

    // Runs `work` on the thread; with null once the connection is lost.
    void run(std::function<void(Session*)> work, Duration delay = Duration::zero());

    // For the thread.
    Session* session() { return session_.get(); }

private:
    // The codes of modifiers are small.
    static std::uint64_t bitOf(KeyCode modifier) {
        return modifier < 64 ? std::uint64_t{1} << modifier : 0;
    }

    void connect();
    bool processEvents();
    void flush();

    std::atomic<bool> isAlive_{true};
    std::atomic<std::uint64_t> held_{0};
    std::unique_ptr<Session> session_;  // the thread's own, null without a compositor
    std::optional<DescriptorSource> source_;
    std::optional<GLibThread> thread_;
};

}  // namespace quorvi
