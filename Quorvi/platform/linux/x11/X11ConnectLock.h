#pragma once

#include <mutex>

namespace quorvi {

// Held around XOpenDisplay() and xcb_connect(): both find the server's key through libXau, which
// builds the file name in a static buffer, so two threads that connect at once can free it under
// each other. Any thread; not recursive.
[[nodiscard]] inline std::unique_lock<std::mutex> lockX11Connecting() {
    static std::mutex mutex;
    return std::unique_lock(mutex);
}

}  // namespace quorvi
