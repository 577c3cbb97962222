#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// A connection to sway's command socket, $SWAYSOCK: questions with their answers, or events. One
// thread at a time; nothing waits longer than a second.
class SwaySocket {
public:
    enum class Message : std::uint32_t {
        command = 0,
        subscribe = 2,
        tree = 4,
        config = 9,
        workspaceEvent = 0x80000000,
        windowEvent = 0x80000003,
        bindingEvent = 0x80000005,
        shutdownEvent = 0x80000006,
    };

    // isAlive() tells whether sway answers there.
    SwaySocket();

    bool isAlive() const { return static_cast<bool>(socket_) && !isLost_; }
    int fileDescriptor() const { return socket_.get(); }

    // Returns the answer in JSON; nullopt when the connection is lost. Not after subscribe().
    std::optional<std::string> ask(Message message, std::string_view payload = {});

    // Asks for events, named by a JSON array. Returns whether they will come.
    bool subscribe(std::string_view events);
    // Calls `handler` for each event that has arrived. Returns isAlive().
    bool readEvents(const std::function<void(Message, const std::string&)>& handler);

private:
    struct Header;

    bool send(Message message, std::string_view payload);
    bool fill(std::size_t size);
    std::optional<Message> next(std::string& payload);

    const Descriptor socket_;
    std::string received_;
    bool isLost_ = false;
};

}  // namespace quorvi
