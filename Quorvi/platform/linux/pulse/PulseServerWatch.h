#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

struct pa_mainloop_api;

namespace quorvi {

// Tells when the sound server's socket appears, so that a server that comes back is found at once.
// Watches the socket's folder, or the nearest folder above it that exists. A server that isn't
// reached through a socket of this machine is not watched. Sound thread only.
class PulseServerWatch {
public:
    PulseServerWatch(pa_mainloop_api* api, const std::filesystem::path& socket,
                     std::function<void()> appeared);
    ~PulseServerWatch();
    PulseServerWatch(const PulseServerWatch&) = delete;
    PulseServerWatch& operator=(const PulseServerWatch&) = delete;

    // Where the server's socket is looked for: `server` in the notation of PULSE_SERVER, or, when
    // empty, what the environment says. Empty when that is no socket of this machine.
    static std::filesystem::path socketPath(const std::string& server);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi
