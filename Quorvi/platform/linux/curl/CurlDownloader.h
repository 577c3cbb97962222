#pragma once

#include <stop_token>
#include <string>

#include "Quorvi/platform/Downloader.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Downloads over libcurl, one after another on a thread of its own. Keeps no connection, cookie or
// cache between them. Main thread; its destruction ends the running downloads with Cancelled.
class CurlDownloader : public Downloader {
public:
    // `caFile` names the certificates to trust (PEM) instead of the system's.
    explicit CurlDownloader(Scheduler& scheduler, std::string caFile = {});
    ~CurlDownloader() override;

    Task<Bytes> fetch(std::string url, std::size_t limit, std::stop_token stop) override;
    Task<void> download(std::string url, std::filesystem::path file, std::uint64_t length,
                        std::function<void(std::uint64_t)> progress, std::stop_token stop) override;

private:
    Scheduler& scheduler_;
    const std::string caFile_;
    std::stop_source ending_;
    SerialExecutor worker_{"quorvi-update"};
};

}  // namespace quorvi
