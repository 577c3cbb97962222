#include "Quorvi/app/commands/CloudCheckCommand.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <optional>
#include <string>

#include "Quorvi/app/commands/StoredPreferences.h"
#include "Quorvi/app/composition/CloudDatabases.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/sync/CloudReleaseCheck.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration patience = 5min;
constexpr std::int32_t noAccount = 2;  // a result of the check

void print(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

// What somebody can do who has no account in this kind of cloud.
std::string missingAccount(const std::string& address) {
    return isServerAddress(address)
               ? "Cloud check: the server does not let you in. Check its address, and store its "
                 "password with quorvi --store-cloud-password."
               : "Cloud check: the folder can't be used. Check that it exists and that you may "
                 "write to it.";
}

Task<void> check(CloudDatabase& database, const std::string& address,
                 std::optional<std::int32_t>& status) {
    std::string result;
    const std::function<void(const std::string&)> keep = [&](const auto& line) { result = line; };
    auto running = CloudReleaseCheck::run(database, keep);
    const auto ended = co_await running;
    print(ended == noAccount ? missingAccount(address) : result);
    status = ended;
}

}  // namespace

int runCloudCheck() {
    try {
        StoredPreferences stored;
        const auto address = stored.cloudAddress();
        if (!address) throw QuorviError::message(stored.problem());
        auto& scheduler = stored.scheduler;
        SerialExecutor cloud("cloud");
        const auto makeKeychain = [&]() -> std::unique_ptr<Keychain> {
            return std::make_unique<SecretServiceKeychain>(scheduler);
        };
        const auto database =
            openCloudDatabase(*address, {scheduler, cloud, makeKeychain, UserFolders::find().data});
        std::optional<std::int32_t> status;
        auto task = check(*database, *address, status);
        task.start();
        if (scheduler.runUntil([&] { return status.has_value(); }, patience)) return *status;
        print("Cloud check failed: The database did not answer.");
    } catch (const std::exception& error) {
        print("Cloud check failed: " + shownInEnglish(error));
    }
    return 1;
}

}  // namespace quorvi
