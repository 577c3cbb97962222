#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

// A helper program that may outlive this one: in a session of its own, so that a signal that ends
// this program's terminal or session does not end it. Its standard input is the other end of a
// packet socket, which tells it of this program's end. One thread.
class HelperProcess {
public:
    // Starts it; null if that fails.
    static std::unique_ptr<HelperProcess> start(std::vector<std::string> command);
    // Closes the socket, and waits for nothing.
    ~HelperProcess();
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;

    const Descriptor& socket() const { return *socket_; }

private:
    HelperProcess(std::unique_ptr<Descriptor> socket, pid_t process)
        : socket_(std::move(socket)), process_(process) {}

    std::unique_ptr<Descriptor> socket_;
    const pid_t process_;
};

}  // namespace quorvi
