#include <gtest/gtest.h>

#include <set>

#include "Quorvi/sync/CloudMessage.h"
#include "tests/fakes/FakeCloudDatabase.h"
#include "tests/support/cloud/UnreliableCloud.h"
#include "tests/sync/SyncMachine.h"

namespace quorvi::test {
namespace {

using Texts = std::vector<std::string>;

class AccountSyncTroubleTest : public testing::Test {
protected:
    void start() {
        machine.start();
        clock.advance(5s);
    }
    const Message& status() const { return machine.sync->status(); }
    int passes() { return cloud.calls[CloudOperation::zoneChanges]; }

    VirtualScheduler clock;
    FakeCloudServer server{clock};
    FakeCloudDatabase cloud{clock, server, "ada"};
    SyncMachine machine{clock, cloud};
};

TEST_F(AccountSyncTroubleTest, EveryErrorHasItsSentence) {
    const std::vector<std::pair<int, Message>> sentences{
        {3, say::syncOffline()},      {4, say::syncOffline()},     {5, say::syncNoAccess(5)},
        {8, say::syncNoAccess(8)},    {10, say::syncNoAccess(10)}, {9, say::syncSignIn()},
        {25, say::syncStorageFull()}, {6, say::syncWillRetry(6)},  {23, say::syncWillRetry(23)},
    };
    for (const auto& [code, sentence] : sentences)
        EXPECT_EQ(cloudMessage(CloudError(code)), sentence) << code;
    EXPECT_EQ(cloudMessage(std::runtime_error("other")), say::syncUnavailable());
}

TEST_F(AccountSyncTroubleTest, WithoutADatabaseTheStatusSaysSoAndChangesAreKept) {
    machine.hasCloud = false;
    start();
    machine.dictate("kept");
    machine.sync->syncNow();
    clock.advance(60s);
    EXPECT_EQ(status(), say::syncNoAccess(cloudErrorCode::badContainer));
    EXPECT_EQ(machine.sync->pendingCount(), 13u);
    EXPECT_TRUE(cloud.calls.empty());
}

TEST_F(AccountSyncTroubleTest, AfterAnErrorTheCloudIsLeftAlone) {
    start();
    clock.advance(60s);
    cloud.fail(CloudOperation::zoneChanges, CloudError(6));
    machine.sync->syncNow();
    clock.advance(1s);
    const auto before = passes();
    for (int i = 0; i < 28; ++i) {
        machine.sync->syncNow();
        clock.advance(1s);
    }
    EXPECT_EQ(passes(), before);
    clock.advance(20s);
    EXPECT_GT(passes(), before);
    EXPECT_EQ(status(), say::syncUpToDate());

    cloud.fail(CloudOperation::zoneChanges, CloudError(7, "busy", 300s));
    machine.sync->syncNow();
    clock.advance(1s);
    const auto then = passes();
    clock.advance(295s);
    EXPECT_EQ(passes(), then);
    clock.advance(30s);
    EXPECT_GT(passes(), then);
}

TEST_F(AccountSyncTroubleTest, ARecordThatIsRefusedIsSentAgain) {
    start();
    for (const auto code : {6, 11, 14, 25, 26}) {
        const auto text = "refused with " + std::to_string(code);
        machine.dictate(text);
        const auto name = "history:" + machine.history->records()[0].id.string();
        cloud.failRecord(name, CloudError(code));
        clock.advance(1500ms);
        EXPECT_FALSE(server.record("ada", {"QuorviAccount", name}));
        EXPECT_EQ(status(), say::syncPending(1));
        EXPECT_EQ(machine.sync->pendingCount(), 1u);
        clock.advance(60s);
        EXPECT_TRUE(server.record("ada", {"QuorviAccount", name})) << code;
        EXPECT_EQ(status(), say::syncUpToDate());
    }
}

TEST_F(AccountSyncTroubleTest, TheStatusSaysWhatIsWrongWithTheAccount) {
    start();
    cloud.status = CloudAccountStatus::noAccount;  // without a notification
    machine.sync->syncNow();
    clock.advance(1s);
    EXPECT_EQ(status(), say::syncAccountUnavailable());
    cloud.status.reset();
    cloud.signIn("bob");
    clock.advance(60s);
    EXPECT_EQ(status(), say::syncOtherAccount());
    cloud.signOut();
    clock.advance(60s);
    EXPECT_EQ(status(), say::syncSignIn());
}

TEST_F(AccountSyncTroubleTest, AResetOfTheCloudSwitchesSyncOffAndKeepsEverything) {
    start();
    machine.dictate("kept");
    clock.advance(5s);
    server.resetZone("ada", "QuorviAccount");
    clock.advance(5s);
    EXPECT_EQ(status(), say::syncOff());
    EXPECT_FALSE(machine.sync->enabled());
    EXPECT_EQ(machine.preferences.boolean("iCloudSyncEnabled"), false);
    EXPECT_EQ(machine.texts(), Texts{"kept"});
    clock.advance(120s);
    EXPECT_TRUE(server.zones("ada").empty());

    machine.sync->setEnabled(true);
    clock.advance(5s);
    EXPECT_EQ(status(), say::syncUpToDate());
    EXPECT_EQ(machine.texts(), Texts{"kept"});
    EXPECT_EQ(server.records("ada", "QuorviAccount").size(), 13u);
}

TEST_F(AccountSyncTroubleTest, AnUnreadableArchiveIsLeftAlone) {
    machine.files.files[SyncMachine::archiveFile] = "{\"ledger\":";
    start();
    machine.dictate("one");
    clock.advance(60s);
    EXPECT_EQ(status(), say::syncDataUnreadable());
    machine.quit();
    EXPECT_EQ(machine.files.files[SyncMachine::archiveFile], "{\"ledger\":");
    EXPECT_TRUE(cloud.calls.empty());
}

TEST_F(AccountSyncTroubleTest, AFailedWriteEndsSyncUntilTheNextStart) {
    start();
    machine.files.full = machine.journals.full = true;
    machine.dictate("one");
    clock.advance(5s);
    EXPECT_EQ(status(), say::syncNotSaved());
    machine.files.full = machine.journals.full = false;
    const auto before = passes();
    machine.sync->syncNow();
    clock.advance(120s);
    EXPECT_EQ(passes(), before);
    machine.quit();
    machine.start();
    clock.advance(5s);
    EXPECT_EQ(status(), say::syncUpToDate());
}

// A list that is empty because of a fault must not delete everything on all machines.
TEST_F(AccountSyncTroubleTest, AStoreThatFailedToLoadDeletesNothing) {
    start();
    machine.dictate("precious");
    machine.corrections->save({.original = "a", .replacement = "b"});
    clock.advance(5s);
    machine.quit();
    machine.files.files["history.json"] = "broken";
    machine.start();
    clock.advance(60s);
    ASSERT_TRUE(machine.history->persistenceError());
    std::set<bool> deleted;
    for (const auto& [name, record] : server.records("ada", "QuorviAccount"))
        deleted.insert(SyncItem::decode(textOf(*record.payload))->deleted());
    EXPECT_EQ(deleted, std::set<bool>{false});
}

TEST_F(AccountSyncTroubleTest, InvalidRecordsAreCountedAndIgnored) {
    start();
    FakeCloudDatabase other(clock, server, "ada");
    const SyncItem strange("history:other", std::nullopt, 1, "X", false);
    auto saving =
        other.saveRecords({{{"QuorviAccount", "a"}, "Other", Bytes{1}, {}},
                           {{"QuorviAccount", "b"}, "QuorviItem", std::nullopt, {}},
                           {{"QuorviAccount", "c"}, "QuorviItem", bytesOf("{}"), {}},
                           {{"QuorviAccount", "d"}, "QuorviItem", bytesOf(strange.encoded()), {}}},
                          {});
    saving.start();
    // It would beat the user's own choices for ever.
    const CloudRecordID mode{"QuorviAccount", "setting:mode"};
    const auto before = *server.record("ada", mode);
    const SyncItem eternal(mode.name, std::nullopt, INT64_MAX, "X", false);
    auto overwriting =
        other.saveRecords({{mode, "QuorviItem", bytesOf(eternal.encoded()), before.changeTag}}, {});
    overwriting.start();
    auto zone = other.saveZone("Elsewhere", {});
    zone.start();
    clock.settle();
    auto elsewhere = other.saveRecords({{{"Elsewhere", "e"}, "QuorviItem", Bytes{1}, {}}}, {});
    elsewhere.start();
    clock.advance(20s);
    for (const auto* key : {"ignoredType", "missingPayload", "mismatchedID", "ignoredZone"})
        EXPECT_EQ(machine.diagnostic(key), 1) << key;
    EXPECT_EQ(machine.diagnostic("invalidPayload"), 2);
    EXPECT_EQ(server.record("ada", mode)->payload, before.payload) << "saved again";
    EXPECT_EQ(status(), say::syncUpToDate());
}

// What comes between the two is ignored, and the fetch that has brought it must not go on.
TEST_F(AccountSyncTroubleTest, NothingIsMissedBetweenOffAndOn) {
    FakeCloudDatabase elsewhere(clock, server, "ada");
    SyncMachine other(clock, elsewhere);
    other.start();
    UnreliableCloud flaky(cloud, 1);
    flaky.isBad = false;
    machine.cloud = &flaky;
    start();
    flaky.onPage = [&] {
        clock.post([this] { machine.sync->setEnabled(true); });
        machine.sync->setEnabled(false);
        flaky.onPage = {};
    };
    other.dictate("precious");
    clock.advance(60s);
    EXPECT_FALSE(flaky.onPage);
    EXPECT_EQ(status(), say::syncUpToDate());
    EXPECT_EQ(machine.texts(), Texts{"precious"});
}

// Sync works again after an interruption within any call, and no change is lost.
TEST_F(AccountSyncTroubleTest, EverySuspensionPointMeetsEveryInterruption) {
    using Op = CloudOperation;
    struct World {
        VirtualScheduler time;
        FakeCloudServer server{time};
        FakeCloudDatabase database{time, server, "ada"};
        SyncMachine machine{time, database};
        Op operation{};
    };
    struct {
        std::string name;
        void (*happen)(World&);
    } const interruptions[]{
        {"off and on",
         [](World& world) {
             auto& sync = *world.machine.sync;
             sync.setEnabled(false);
             sync.setEnabled(true);
             world.time.advance(1ms);
             sync.setEnabled(false);
             world.time.advance(1ms);
             sync.setEnabled(true);
         }},
        {"off", [](World& world) { world.machine.sync->setEnabled(false); }},
        {"signed out", [](World& world) { world.database.signOut(); }},
        {"other user", [](World& world) { world.database.signIn("bob"); }},
        {"reset", [](World& world) { world.server.resetZone("ada", "QuorviAccount"); }},
        {"failure", [](World& world) { world.database.fail(world.operation, CloudError(4)); }},
        {"restart",
         [](World& world) {
             world.machine.quit();
             world.machine.start();
         }},
        {"killed",
         [](World& world) {
             world.machine.kill();
             world.machine.start();
         }},
    };
    for (const auto operation : {Op::accountStatus, Op::userRecordName, Op::saveSubscription,
                                 Op::saveZone, Op::zoneChanges, Op::recordChanges, Op::saveRecords})
        for (const auto& [name, happen] : interruptions)
            for (const bool connects : {true, false}) {
                SCOPED_TRACE(name + (connects ? ", connecting" : ", in a pass") + ", operation " +
                             std::to_string(static_cast<int>(operation)));
                // Until the owner of the data is known, any account is accepted.
                if (connects && name == "other user" &&
                    (operation == Op::accountStatus || operation == Op::userRecordName))
                    continue;
                World world{.operation = operation};
                auto& [time, cloudServer, database, one, held] = world;
                if (connects) database.hold(held);
                one.start();
                time.advance(3s);
                if (!connects) database.hold(held);
                one.dictate("precious");
                time.advance(3s);
                happen(world);
                time.advance(3s);
                database.release(held);
                time.advance(3s);
                EXPECT_TRUE(cloudServer.records("bob", "QuorviAccount").empty());
                if (name == "off") {
                    EXPECT_EQ(one.sync->status(), say::syncOff());
                    const auto calls = database.calls;
                    one.sync->syncNow();
                    time.advance(60s);
                    EXPECT_EQ(database.calls, calls);
                }
                database.signIn("ada");
                one.sync->setEnabled(true);
                time.advance(150s);
                EXPECT_EQ(one.texts(), Texts{"precious"});
                if (name == "reset") continue;  // the cloud's data is gone for good
                EXPECT_EQ(one.sync->status(), say::syncUpToDate());
                EXPECT_EQ(cloudServer.records("ada", "QuorviAccount").size(), 13u);
                EXPECT_FALSE(one.sync->working());
            }
}

}  // namespace
}  // namespace quorvi::test
