#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/Downloader.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi::test {

// A server that answers every fetch after a while with the same body, as its fields say at that
// moment, and from which nothing can be downloaded.
class FakeDownloader : public Downloader {
public:
    explicit FakeDownloader(Scheduler& scheduler) : scheduler_(scheduler) {}

    Task<Bytes> fetch(std::string url, std::size_t, std::stop_token stop) override {
        fetched.push_back(std::move(url));
        auto travelling = sleepFor(scheduler_, answersAfter, stop);
        co_await travelling;
        if (failure) throw QuorviError::message(*failure);
        co_return Bytes(body.begin(), body.end());
    }
    Task<void> download(std::string, std::filesystem::path, std::uint64_t,
                        std::function<void(std::uint64_t)>, std::stop_token stop) override {
        auto travelling = sleepFor(scheduler_, answersAfter, stop);
        co_await travelling;
        throw QuorviError::message("There is nothing to download.");
    }

    Duration answersAfter = std::chrono::seconds(1);
    std::string body;
    std::optional<std::string> failure;
    std::vector<std::string> fetched;

private:
    Scheduler& scheduler_;
};

}  // namespace quorvi::test
