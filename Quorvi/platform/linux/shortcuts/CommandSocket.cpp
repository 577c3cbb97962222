#include "Quorvi/platform/linux/shortcuts/CommandSocket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

#include "Quorvi/platform/linux/shortcuts/CommandAddress.h"

namespace quorvi {

CommandSocket::CommandSocket(std::function<void(const std::string&)> told)
    : told_(std::move(told)),
      path_(commandAddress()),
      socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    if (listen()) source_.emplace(socket_.get(), [this] { return receive(); });
}

CommandSocket::~CommandSocket() {
    source_.reset();
    if (!path_.empty()) unlink(path_.c_str());
}

// A killed run leaves its socket behind.
bool CommandSocket::listen() {
    sockaddr_un address{};
    if (!socket_ || !fill(address, path_)) return false;
    unlink(path_.c_str());
    return bind(socket_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

bool CommandSocket::receive() {
    std::array<char, 64> word{};
    for (;;) {
        const auto length = recv(socket_.get(), word.data(), word.size(), 0);
        if (length < 0) return true;
        told_(std::string(word.data(), static_cast<std::size_t>(length)));
    }
}

}  // namespace quorvi
