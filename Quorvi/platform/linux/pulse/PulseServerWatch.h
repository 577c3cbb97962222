#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

struct pa_mainloop_api;

namespace quorvi {

// Calls back when the sound server's socket appears, so that a restarted server is found at once.
// Watches the socket's folder, or the nearest existing folder above it; not a server that has no
// local socket. Sound thread only.
class PulseServerWatch {
public:
    PulseServerWatch(pa_mainloop_api* api, const std::filesystem::path& socket,
                     std::function<void()> appeared);
    ~PulseServerWatch();
    PulseServerWatch(const PulseServerWatch&) = delete;
    PulseServerWatch& operator=(const PulseServerWatch&) = delete;

    // The path of the server's socket. `server` is in the notation of PULSE_SERVER; empty means the
    // environment's. Empty if the server has no local socket.
    static std::filesystem::path socketPath(const std::string& server);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi
