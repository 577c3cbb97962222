#pragma once

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <poll.h>
#include <sched.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <deque>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace quorvi::bench {

// A network link with latency: two network namespaces, a TUN device in each, and a thread that
// carries packets across after a fixed delay. The kernel's TCP runs at both ends, so handshakes,
// slow start and acknowledgements take real round trips. Loss, jitter and bandwidth are not
// modelled.
//
// The constructor moves the calling thread into the far namespace, so that servers can be started
// there; enterNearSide() moves it into the near one, where the client runs. Both must come before
// other threads are started. Needs root and /dev/net/tun.
class DelayedLink {
public:
    static constexpr const char* nearAddress = "10.77.0.1";
    static constexpr const char* farAddress = "10.77.0.2";

    explicit DelayedLink(std::chrono::nanoseconds oneWay) : oneWay_(oneWay) {
        devices_[1] = enterNamespace(farAddress);
    }
    ~DelayedLink() {
        if (thread_.joinable()) {
            const std::uint64_t one = 1;
            if (write(ending_, &one, sizeof one) < 0) std::terminate();
            thread_.join();
        }
        for (const int device : devices_) close(device);
        close(ending_);
    }
    DelayedLink(const DelayedLink&) = delete;
    DelayedLink& operator=(const DelayedLink&) = delete;

    void enterNearSide() {
        devices_[0] = enterNamespace(nearAddress);
        thread_ = std::thread([this] { carry(); });
    }

private:
    using Clock = std::chrono::steady_clock;
    struct Packet {
        Clock::time_point due;
        std::vector<char> bytes;
    };

    static void check(bool succeeded, const char* what) {
        if (!succeeded) throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
    }

    // Makes a TUN device with this address in a new namespace and moves the thread there.
    static int enterNamespace(const char* address) {
        check(unshare(CLONE_NEWNET) == 0, "new network namespace");
        const int device = open("/dev/net/tun", O_RDWR | O_NONBLOCK | O_CLOEXEC);
        check(device >= 0, "/dev/net/tun");
        ifreq request{};
        std::strcpy(request.ifr_name, "link");
        request.ifr_flags = IFF_TUN | IFF_NO_PI;
        check(ioctl(device, TUNSETIFF, &request) == 0, "TUN device");

        const int control = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        auto& inet = reinterpret_cast<sockaddr_in&>(request.ifr_addr);
        inet = {};
        inet.sin_family = AF_INET;
        inet_pton(AF_INET, address, &inet.sin_addr);
        check(ioctl(control, SIOCSIFADDR, &request) == 0, "address");
        inet_pton(AF_INET, "255.255.255.0", &inet.sin_addr);
        check(ioctl(control, SIOCSIFNETMASK, &request) == 0, "netmask");
        request.ifr_flags = IFF_UP | IFF_RUNNING;
        check(ioctl(control, SIOCSIFFLAGS, &request) == 0, "link up");
        close(control);
        return device;
    }

    void carry() {
        std::array<std::deque<Packet>, 2> ways;  // by the packet's source device
        for (;;) {
            std::array<pollfd, 3> ready{
                {{devices_[0], POLLIN, 0}, {devices_[1], POLLIN, 0}, {ending_, POLLIN, 0}}};
            const auto wait = untilFirstDue(ways);
            ppoll(ready.data(), ready.size(), wait.tv_sec < 0 ? nullptr : &wait, nullptr);
            if (ready[2].revents) return;
            for (std::size_t side = 0; side < 2; ++side) {
                takeIn(devices_[side], ways[side]);
                handOver(ways[side], devices_[1 - side]);
            }
        }
    }

    static timespec untilFirstDue(const std::array<std::deque<Packet>, 2>& ways) {
        auto first = Clock::time_point::max();
        for (const auto& way : ways)
            if (!way.empty()) first = std::min(first, way.front().due);
        if (first == Clock::time_point::max()) return {-1, 0};
        const auto left = std::max<std::int64_t>((first - Clock::now()).count(), 0);
        return {left / 1'000'000'000, left % 1'000'000'000};
    }

    void takeIn(int device, std::deque<Packet>& way) {
        std::array<char, 65536> buffer;
        for (ssize_t n; (n = read(device, buffer.data(), buffer.size())) > 0;)
            way.push_back({Clock::now() + oneWay_, {buffer.data(), buffer.data() + n}});
    }

    static void handOver(std::deque<Packet>& way, int device) {
        while (!way.empty() && way.front().due <= Clock::now()) {
            const auto& bytes = way.front().bytes;
            // A packet that does not fit is dropped.
            if (write(device, bytes.data(), bytes.size()) < 0 && errno == EBADF) return;
            way.pop_front();
        }
    }

    const std::chrono::nanoseconds oneWay_;
    std::array<int, 2> devices_{-1, -1};  // near, far
    int ending_ = eventfd(0, EFD_CLOEXEC);
    std::thread thread_;
};

}  // namespace quorvi::bench
