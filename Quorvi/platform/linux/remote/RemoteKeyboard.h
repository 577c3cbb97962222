#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quorvi {

// A session of the desktop's in which keys can be pressed. It ends with this object, and the
// desktop then lets go of what is still down. On one thread, which runs its default GLib context
// (see GLibThread); nothing blocks. Not to be destroyed inside a call that it makes.
class RemoteKeyboard {
public:
    struct Sinks {
        // The user allows it, or has before. Given a token with which the desktop does not ask
        // again; empty if it gives none.
        std::function<void(const std::string& token)> opened;
        std::function<void()> lost;  // it was refused or has failed, or the desktop has ended it
    };

    virtual ~RemoteKeyboard() = default;

    // A key as Linux counts them. `sent` is called when the desktop has taken it; if it does not,
    // the session is lost.
    virtual void send(std::uint32_t key, bool isDown, std::function<void()> sent) = 0;
};

}  // namespace quorvi
