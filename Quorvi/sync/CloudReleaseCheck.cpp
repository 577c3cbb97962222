#include "Quorvi/sync/CloudReleaseCheck.h"

#include <stdexcept>
#include <utility>

#include "QuorviCore/base/Bytes.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

namespace {

Task<void> writeAndReadBack(CloudDatabase& database, const std::string& zone,
                            std::stop_token stop) {
    auto making = database.saveZone(zone, stop);
    co_await making;
    const CloudRecord written{.id = {zone, "synthetic-check"},
                              .type = "QuorviItem",
                              .payload = bytesOf("Quorvi sync verification")};
    auto saving = database.saveRecords({written}, stop);
    const auto results = co_await saving;
    if (results.at(0).error) throw *results[0].error;
    auto fetching = database.fetchRecord(written.id, stop);
    const auto fetched = co_await fetching;
    if (fetched.payload != written.payload)
        throw std::runtime_error(
            "The data couldn’t be read because it isn’t in the correct format.");
    auto deleting = database.deleteZone(zone, stop);
    co_await deleting;
}

Task<void> cleanUp(CloudDatabase& database, const std::string& zone, std::stop_token stop) {
    try {
        auto deleting = database.deleteZone(zone, stop);
        co_await deleting;
    } catch (const std::exception&) {
        // The first failure is the one to report.
    }
}

}  // namespace

Task<std::int32_t> CloudReleaseCheck::run(CloudDatabase& database,
                                          std::function<void(const std::string&)> print,
                                          std::stop_token stop) {
    const auto zone = "QuorviReleaseCheck-" + newUuid();
    std::string failure;
    bool hasFailed = false, hasBegun = false, hasAccount = true;
    try {
        auto asking = database.accountStatus(stop);
        const auto status = co_await asking;
        hasAccount = status == CloudAccountStatus::available;
        if (hasAccount) {
            hasBegun = true;
            auto checking = writeAndReadBack(database, zone, stop);
            co_await checking;
        }
    } catch (const std::exception& error) {
        hasFailed = true;
        failure = error.what();
    }
    if (!hasAccount) {
        print("Cloud check: no signed-in iCloud account");
        co_return 2;
    }
    if (hasFailed) {
        if (hasBegun) {
            auto cleaning = cleanUp(database, zone, stop);
            co_await cleaning;
        }
        print("Cloud check failed: " + failure);
        co_return 1;
    }
    print("Cloud check passed: signed account access, private-zone write/read and cleanup.");
    co_return 0;
}

}  // namespace quorvi
