#pragma once

#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/Downloader.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi::test {

// A server that answers every request after `answersAfter`: a fetch with `body`, a download with
// `package`.
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
    Task<void> download(std::string, std::filesystem::path file, std::uint64_t,
                        std::function<void(std::uint64_t)> progress,
                        std::stop_token stop) override {
        if (package) progress(package->size() / 2);
        auto travelling = sleepFor(scheduler_, answersAfter, stop);
        co_await travelling;
        if (!package) throw QuorviError::message(say::updateNotRead());
        std::ofstream(file, std::ios::binary) << *package;
    }

    Duration answersAfter = std::chrono::seconds(1);
    std::string body;
    std::optional<Message> failure;
    std::optional<std::string> package;
    std::vector<std::string> fetched;

private:
    Scheduler& scheduler_;
};

}  // namespace quorvi::test
