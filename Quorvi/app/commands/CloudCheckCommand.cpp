#include "Quorvi/app/commands/CloudCheckCommand.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>

#include "Quorvi/app/commands/StoredPreferences.h"
#include "Quorvi/app/composition/CloudDatabases.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/sync/CloudReleaseCheck.h"
#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration patience = 5min;

void print(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

Task<void> check(CloudDatabase& database, std::optional<std::int32_t>& status) {
    auto running = CloudReleaseCheck::run(database, print);
    status = co_await running;
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
        auto task = check(*database, status);
        task.start();
        if (scheduler.runUntil([&] { return status.has_value(); }, patience)) return *status;
        print("Cloud check failed: The database did not answer.");
    } catch (const std::exception& error) {
        print(std::string("Cloud check failed: ") + error.what());
    }
    return 1;
}

}  // namespace quorvi
