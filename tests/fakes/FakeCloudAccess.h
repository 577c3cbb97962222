#pragma once

#include <string>
#include <vector>

#include "Quorvi/platform/CloudAccess.h"
#include "QuorviCore/async/Async.h"

namespace quorvi::test {

// A cloud whose answers the test sets. A check takes a second.
class FakeCloudAccess : public CloudAccess {
public:
    explicit FakeCloudAccess(Scheduler& scheduler) : scheduler_(scheduler) {}

    std::optional<Message> problem(const std::string& address) const override {
        return address == "folder:" ? std::optional(say::cloudAddressNotAbsolute(address))
                                    : std::nullopt;
    }
    Task<bool> storePassword(std::string address, Secret password, std::stop_token) override {
        stored = address + ' ' + std::string(password.view());
        co_return keyringIsOpen;
    }
    Task<std::optional<Message>> check(std::stop_token stop) override {
        auto waiting = sleepFor(scheduler_, std::chrono::seconds(1), stop);
        co_await waiting;
        co_return result;
    }
    Task<std::vector<CloudComputer>> computers(std::stop_token) override { co_return known; }
    Task<void> nameThisComputer(std::string name, std::stop_token) override {
        for (auto& each : known)
            if (each.isThis) each.name = name;
        co_return;
    }
    Task<std::optional<Message>> removeComputer(std::string id, std::stop_token) override {
        std::erase_if(known, [&](const auto& each) { return each.id == id; });
        co_return std::nullopt;
    }

    std::optional<Message> result;
    std::vector<CloudComputer> known;
    bool keyringIsOpen = true;
    std::string stored;

private:
    Scheduler& scheduler_;
};

}  // namespace quorvi::test
