#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <stop_token>
#include <string>

#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// Fetches what a server publishes, over HTTPS only: certificates are verified, and a redirect to
// anything else is refused. Throws QuorviError with the reason, for every status other than 200
// too, and Cancelled after a stop. Main thread only; transfers run elsewhere.
class Downloader {
public:
    virtual ~Downloader() = default;

    // The whole body, refused when it is larger than `limit` bytes.
    virtual Task<Bytes> fetch(std::string url, std::size_t limit, std::stop_token stop) = 0;

    // Writes the body, which must have exactly `length` bytes, to a new file (0600) in a folder
    // that exists. `progress` is told now and then, on the main thread, how many bytes are there.
    // However a download ends other than well, its file is gone by then.
    virtual Task<void> download(std::string url, std::filesystem::path file, std::uint64_t length,
                                std::function<void(std::uint64_t)> progress,
                                std::stop_token stop) = 0;
};

}  // namespace quorvi
