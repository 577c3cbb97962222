#include "Quorvi/sync/CloudReleaseCheck.h"

#include <exception>
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

// Also after a stop.
Task<void> cleanUp(CloudDatabase& database, const std::string& zone) {
    try {
        auto deleting = database.deleteZone(zone, {});
        co_await deleting;
    } catch (const std::exception&) {
        // The first failure is the one to report.
    }
}

}  // namespace

Task<bool> CloudReleaseCheck::tryOut(CloudDatabase& database, std::stop_token stop) {
    auto asking = database.accountStatus(stop);
    const auto status = co_await asking;
    if (status != CloudAccountStatus::available) co_return false;
    const auto zone = "QuorviReleaseCheck-" + newUuid();
    std::exception_ptr failure;
    try {
        auto checking = writeAndReadBack(database, zone, stop);
        co_await checking;
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure) {
        auto cleaning = cleanUp(database, zone);
        co_await cleaning;
        std::rethrow_exception(failure);
    }
    co_return true;
}

Task<std::int32_t> CloudReleaseCheck::run(CloudDatabase& database,
                                          std::function<void(const std::string&)> print,
                                          std::stop_token stop) {
    try {
        auto trying = tryOut(database, std::move(stop));
        const bool hasAccount = co_await trying;
        print(
            hasAccount
                ? "Cloud check passed: signed account access, private-zone write/read and cleanup."
                : "Cloud check: no signed-in iCloud account");
        co_return hasAccount ? 0 : 2;
    } catch (const std::exception& error) {
        print(std::string("Cloud check failed: ") + error.what());
    }
    co_return 1;
}

}  // namespace quorvi
