#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <stop_token>
#include <string>

#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// Downloads over HTTPS only: certificates are verified, and redirects to anything else are refused.
// Throws QuorviError with the reason, also for every status other than 200, and Cancelled after a
// stop. Main thread; transfers run on another thread.
class Downloader {
public:
    virtual ~Downloader() = default;

    // Returns the body. Throws QuorviError if it is larger than `limit` bytes.
    virtual Task<Bytes> fetch(std::string url, std::size_t limit, std::stop_token stop) = 0;

    // Writes the body, which must have exactly `length` bytes, to a new file (0600) in an existing
    // folder. Calls `progress` from time to time, on the main thread, with the number of bytes
    // received. A download that fails or is stopped leaves no file.
    virtual Task<void> download(std::string url, std::filesystem::path file, std::uint64_t length,
                                std::function<void(std::uint64_t)> progress,
                                std::stop_token stop) = 0;
};

}  // namespace quorvi
