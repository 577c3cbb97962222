#include "Quorvi/platform/linux/wayland/sway/SwaySocket.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>

namespace quorvi {
namespace {

constexpr std::string_view magic = "i3-ipc";
constexpr std::size_t headerSize = magic.size() + 8;
constexpr std::size_t longestMessage = 16'000'000;
constexpr auto patience = std::chrono::seconds(1);

int connectToSway() {
    const char* path = std::getenv("SWAYSOCK");
    sockaddr_un address{};
    if (!path || !*path || std::strlen(path) >= sizeof address.sun_path) return -1;
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, path);
    const int found = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (found < 0) return -1;
    if (connect(found, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return found;
    close(found);
    return -1;
}

}  // namespace

SwaySocket::SwaySocket() : socket_(connectToSway()) {}

bool SwaySocket::send(Message message, std::string_view payload) {
    if (!isAlive()) return false;
    const std::array<std::uint32_t, 2> numbers{static_cast<std::uint32_t>(payload.size()),
                                               static_cast<std::uint32_t>(message)};
    std::string whole(magic);
    whole.append(reinterpret_cast<const char*>(numbers.data()), sizeof numbers);
    whole += payload;
    // Far shorter than the socket's buffer, so a partial write means a sway that hangs.
    const auto sent = ::send(socket_.get(), whole.data(), whole.size(), MSG_NOSIGNAL);
    isLost_ = sent != static_cast<ssize_t>(whole.size());
    return !isLost_;
}

// Reads until there are `size` bytes.
bool SwaySocket::fill(std::size_t size) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (isAlive() && received_.size() < size) {
        std::array<char, 65536> piece;
        const auto got = ::recv(socket_.get(), piece.data(), piece.size(), 0);
        if (got > 0) {
            received_.append(piece.data(), static_cast<std::size_t>(got));
            continue;
        }
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd ready{socket_.get(), POLLIN, 0};
        if (got == 0 || (errno != EAGAIN && errno != EINTR) || left.count() <= 0 ||
            poll(&ready, 1, static_cast<int>(left.count())) <= 0)
            isLost_ = true;
    }
    return isAlive();
}

std::optional<SwaySocket::Message> SwaySocket::next(std::string& payload) {
    if (!fill(headerSize)) return std::nullopt;
    std::array<std::uint32_t, 2> numbers;
    std::memcpy(numbers.data(), received_.data() + magic.size(), sizeof numbers);
    isLost_ = !received_.starts_with(magic) || numbers[0] > longestMessage;
    if (!fill(headerSize + numbers[0])) return std::nullopt;
    payload = received_.substr(headerSize, numbers[0]);
    received_.erase(0, headerSize + numbers[0]);
    return static_cast<Message>(numbers[1]);
}

std::optional<std::string> SwaySocket::ask(Message message, std::string_view payload) {
    std::string answer;
    if (!send(message, payload) || !next(answer)) return std::nullopt;
    return answer;
}

bool SwaySocket::subscribe(std::string_view events) {
    const auto answer = ask(Message::subscribe, events);
    return answer && answer->find("true") != std::string::npos;
}

bool SwaySocket::readEvents(const std::function<void(Message, const std::string&)>& handler) {
    for (;;) {
        char byte;
        if (received_.empty() && ::recv(socket_.get(), &byte, 1, MSG_PEEK) < 0 &&
            (errno == EAGAIN || errno == EINTR))
            return isAlive();
        std::string payload;
        const auto event = next(payload);
        if (!event) return false;
        handler(*event, payload);
    }
}

}  // namespace quorvi
