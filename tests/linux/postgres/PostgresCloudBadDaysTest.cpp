#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <random>

#include "tests/support/Seeds.h"
#include "tests/support/cloud/PostgresMachines.h"
#include "tests/support/network/TlsServer.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;
namespace code = cloudErrorCode;

class PostgresCloudBadDaysTest : public testing::Test, protected PostgresDesk {
protected:
    std::string address(const std::string& query = {}) const {
        return server.address(account, query);
    }

    PostgresServer server;
    const std::string account = newAccount(server);
};

// After the server is killed during saves and commits, every acknowledged save is there; any other
// is there completely or not at all.
TEST_F(PostgresCloudBadDaysTest, LosesNothingAcknowledgedWhenTheServerIsKilled) {
    const auto seed = fromEnvironment("QUORVI_SEED", std::random_device{}());
    std::cout << "QUORVI_SEED=" << seed << std::endl;
    std::mt19937 random(seed);
    const auto database = machine(address());
    get(database->saveZone("Notes", {}));
    std::map<std::string, CloudRecord> acknowledged;
    int number = 0;
    constexpr int batch = 40;
    for (int round = 0; round < 4; ++round) {
        std::vector<std::unique_ptr<Running<std::vector<CloudSaveResult>>>> savings(random() % 10 +
                                                                                    3);
        for (auto& saving : savings) {
            std::vector<CloudRecord> records;
            for (int j = 0; j < batch; ++j)
                records.push_back(noteRecord("r" + std::to_string(number++), "text"));
            saving = std::make_unique<Running<std::vector<CloudSaveResult>>>(
                database->saveRecords(std::move(records), {}));
        }
        // Kill it when some saves are complete, one is running and the rest are queued.
        const auto& enough = savings[random() % savings.size()];
        runUntil([&] { return enough->ended(); });
        server.kill();
        for (const auto& saving : savings) {
            ASSERT_TRUE(ends(*saving));
            if (!saving->value()) continue;
            for (const auto& result : *saving->value())
                if (!result.error)
                    acknowledged.insert_or_assign(result.record.id.name, result.record);
        }
        const auto offline = code(database->accountStatus({}));
        EXPECT_TRUE(offline == code::networkUnavailable || offline == code::networkFailure)
            << offline;
        server.start();
        const auto stored = everything(*database);
        for (const auto& [name, one] : acknowledged) EXPECT_EQ(stored.at(name), one) << name;
        EXPECT_EQ(stored.size() % batch, 0u) << "a transaction was torn";
    }
    EXPECT_FALSE(acknowledged.empty());
}

TEST_F(PostgresCloudBadDaysTest, FindsARestartedServerAgain) {
    const auto database = machine(address(), {.firstRetry = 50ms, .lastRetry = 200ms});
    const auto other = machine(address());
    get(database->saveZone("Notes", {}));
    int told = 0;
    auto subscription = database->onRemoteChange([&] { ++told; });
    get(database->saveSubscription("changes", {}));
    server.stop();
    const auto error = failure(database->accountStatus({}));
    ASSERT_TRUE(error);
    EXPECT_NE(error->code(), code::notAuthenticated);
    server.start();
    EXPECT_TRUE(runUntil([&] { return told > 0; })) << "it did not connect by itself";
    const auto before = told;
    get(other->saveRecords({noteRecord("a", "x")}, {}));
    EXPECT_TRUE(runUntil([&] { return told > before; }));
}

TEST_F(PostgresCloudBadDaysTest, GivesUpOnAServerThatHangsAndStopsWhenAsked) {
    auto patient = machine(address(), {.connect = 1h, .response = 1h});
    EXPECT_EQ(get(patient->accountStatus({})), CloudAccountStatus::available);
    server.freeze();
    const auto hasty = machine(address(), {.connect = 300ms});
    EXPECT_EQ(code(hasty->accountStatus({})), code::networkFailure);
    std::stop_source stop;
    Running<CloudZoneChanges> stopped(patient->zoneChanges("", stop.get_token()));
    Running<CloudZoneChanges> left(patient->zoneChanges("", {}));
    stop.request_stop();
    ASSERT_TRUE(ends(stopped));
    EXPECT_TRUE(stopped.cancelled()) << stopped.failure();
    patient.reset();
    ASSERT_TRUE(ends(left));
    EXPECT_TRUE(left.cancelled());
    server.thaw();
}

TEST_F(PostgresCloudBadDaysTest, ReportsAFullDiskAndGoesOnWhenThereIsRoom) {
    // A mount visible only to this process and its server.
    if (unshare(CLONE_NEWNS) != 0) GTEST_SKIP() << "only root may mount";
    ASSERT_EQ(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
    const auto place = (server.folder() / "small").string();
    std::filesystem::create_directory(place);
    server.stop();
    ASSERT_EQ(mount("tmpfs", place.c_str(), "tmpfs", 0, "size=6m"), 0);
    PostgresServer::own(place);
    server.start();
    server.sql("CREATE TABLESPACE small LOCATION '" + place + "'");
    server.sql("ALTER TABLE quorvi.records SET TABLESPACE small");

    const auto database = machine(address());
    get(database->saveZone("Notes", {}));
    std::optional<CloudError> full;
    std::mt19937 random(1);
    std::size_t count = 0;
    for (; count < 1'000 && !full; ++count) {
        std::string incompressible(50'000, ' ');
        std::ranges::generate(incompressible, std::ref(random));
        full = failure(
            database->saveRecords({noteRecord("r" + std::to_string(count), incompressible)}, {}));
    }
    ASSERT_TRUE(full);
    EXPECT_EQ(full->code(), code::quotaExceeded);
    EXPECT_EQ(everything(*database).size(), count - 1);

    ASSERT_EQ(mount("tmpfs", place.c_str(), "tmpfs", MS_REMOUNT, "size=60m"), 0);
    const auto results = get(database->saveRecords({noteRecord("room", "x")}, {}));
    EXPECT_FALSE(results.at(0).error);
    server.stop();
    umount(place.c_str());
}

TEST_F(PostgresCloudBadDaysTest, TalksOnlyToTheServerOfTheCertificate) {
    TestAuthority authority, foreign;
    authority.issue("right", "IP:127.0.0.1");
    authority.issue("elsewhere", "DNS:cloud.example.org");
    authority.issue("late", "IP:127.0.0.1", 0);
    const auto verified = [](const TestAuthority& trusted) {
        return "?sslmode=verify-full&sslrootcert=" + trusted.caFile();
    };
    const auto status = [&](const TestAuthority& trusted) {
        return code(machine(address(verified(trusted)))->accountStatus({}));
    };
    EXPECT_EQ(status(authority), code::badContainer) << "a server without encryption";

    const auto present = [&](const std::string& name) {
        for (const auto& suffix : {".pem", ".key"}) {
            const auto file = server.data() + "/server" + suffix;
            std::filesystem::remove(file);
            std::filesystem::copy_file(authority.file(name + suffix), file);
            chmod(file.c_str(), 0600);
            PostgresServer::own(file);
        }
        for (const auto* setting :
             {"ssl_cert_file = 'server.pem'", "ssl_key_file = 'server.key'", "ssl = on"})
            server.sql("ALTER SYSTEM SET " + std::string(setting));
        server.stop();
        server.start();
    };
    present("right");
    EXPECT_EQ(status(authority), 0);
    EXPECT_EQ(status(foreign), code::badContainer) << "an authority that nobody trusts";
    EXPECT_EQ(server.sqlAs(account, "pass word", "SELECT 1"), "1\n");
    const auto database = machine(address(verified(authority)));
    EXPECT_EQ(get(database->accountStatus({})), CloudAccountStatus::available);
    EXPECT_EQ(server.sql("SELECT count(*) FROM pg_stat_ssl s JOIN pg_stat_activity a USING (pid) "
                         "WHERE a.usename = '" +
                         account + "' AND s.ssl"),
              "1\n");
    present("elsewhere");
    EXPECT_EQ(status(authority), code::badContainer) << "a certificate of another server";
    present("late");
    EXPECT_EQ(status(authority), code::badContainer) << "a certificate that has expired";
}

}  // namespace
}  // namespace quorvi::test
