#pragma once

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi::test {

// A database behind a bad connection: unreachable at times, with lost answers, repeated pages and
// records in random order.
class UnreliableCloud : public CloudDatabase {
public:
    UnreliableCloud(CloudDatabase& real, std::uint64_t seed) : real_(real), random_(seed) {}

    bool isAway = false;
    bool isBad = true;             // loses answers, repeats and reorders
    std::function<void()> onPage;  // called when a page has arrived

    Task<CloudAccountStatus> accountStatus(std::stop_token stop) override {
        return real_.accountStatus(std::move(stop));
    }
    Task<std::string> userRecordName(std::stop_token stop) override {
        reach();
        return real_.userRecordName(std::move(stop));
    }
    Task<void> saveZone(std::string zone, std::stop_token stop) override {
        return real_.saveZone(std::move(zone), std::move(stop));
    }
    Task<void> deleteZone(std::string zone, std::stop_token stop) override {
        return real_.deleteZone(std::move(zone), std::move(stop));
    }
    Task<std::vector<CloudSaveResult>> saveRecords(std::vector<CloudRecord> records,
                                                   std::stop_token stop) override {
        reach();
        auto saving = real_.saveRecords(std::move(records), std::move(stop));
        auto results = co_await saving;
        if (isAway || now(20)) fail();
        co_return results;
    }
    Task<CloudRecord> fetchRecord(CloudRecordID id, std::stop_token stop) override {
        return real_.fetchRecord(std::move(id), std::move(stop));
    }
    Task<CloudZoneChanges> zoneChanges(std::string token, std::stop_token stop) override {
        reach();
        return real_.zoneChanges(std::move(token), std::move(stop));
    }
    Task<CloudRecordChanges> recordChanges(std::string zone, std::string token,
                                           std::stop_token stop) override {
        reach();
        auto fetching = real_.recordChanges(std::move(zone), token, std::move(stop));
        auto page = co_await fetching;
        if (isAway) fail();
        if (const auto told = onPage) told();
        std::shuffle(page.modified.begin(), page.modified.end(), random_);
        if (!page.modified.empty() && now(4)) page.modified.push_back(page.modified.front());
        if (now(8)) {
            page.token = token;  // the whole page comes again
            page.more = true;
        }
        co_return page;
    }
    Task<void> saveSubscription(std::string id, std::stop_token stop) override {
        return real_.saveSubscription(std::move(id), std::move(stop));
    }
    Subscription onRemoteChange(std::function<void()> observer) override {
        return real_.onRemoteChange(std::move(observer));
    }
    Subscription onAccountChange(std::function<void()> observer) override {
        return real_.onAccountChange(std::move(observer));
    }

private:
    bool now(std::uint64_t oneOf) { return isBad && random_() % oneOf == 0; }
    [[noreturn]] static void fail() {
        throw CloudError(cloudErrorCode::networkUnavailable, "away", std::chrono::seconds(1));
    }
    void reach() const {
        if (isAway) fail();
    }

    CloudDatabase& real_;
    std::mt19937_64 random_;
};

}  // namespace quorvi::test
