#include <gtest/gtest.h>

#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "tests/fakes/FakeCloudDatabase.h"
#include "tests/support/Waiting.h"
#include "tests/sync/SyncMachine.h"

namespace quorvi::test {
namespace {

using Texts = std::vector<std::string>;

// Two machines of one user, the first of which runs.
class AccountSyncTest : public testing::Test {
protected:
    AccountSyncTest() {
        first.start();
        settle();
    }
    // Long enough for a local change to reach all machines.
    void settle() { clock.advance(5s); }
    void startSecond() {
        second.start();
        settle();
    }
    SyncItem inCloud(const std::string& name) const {
        const auto record = server.record("ada", {"QuorviAccount", name});
        const auto item = record ? SyncItem::decode(textOf(*record->payload)) : std::nullopt;
        return item.value_or(SyncItem("none", std::nullopt, 0, "", false));
    }

    VirtualScheduler clock;
    FakeCloudServer server{clock};
    FakeCloudDatabase firstCloud{clock, server, "ada"};
    FakeCloudDatabase secondCloud{clock, server, "ada"};
    SyncMachine first{clock, firstCloud};
    SyncMachine second{clock, secondCloud};
};

// Two timers remain, of the model and of sync. Both fire every two seconds, so one wake-up serves
// both.
TEST_F(AccountSyncTest, OnlyTheTickRemainsOnceEverythingIsSent) {
    const std::vector<Duration> idle{2s, 2s};
    clock.advance(1min);
    EXPECT_EQ(clock.timers(), idle);
    first.dictate("one");
    first.model->setVocabulary("Κουζίνα");
    clock.advance(100ms);
    EXPECT_NE(clock.timers(), idle);
    clock.advance(1min);
    EXPECT_EQ(clock.timers(), idle);
}

// The time of the last pass is written with the next change, and at the end.
TEST_F(AccountSyncTest, PassesWithoutNewsLeaveTheDiskAlone) {
    clock.advance(1min);
    const int before = first.files.attempts;
    const auto synced = first.sync->lastSynced();
    clock.advance(5min);
    EXPECT_EQ(first.files.attempts, before);
    const auto last = first.sync->lastSynced();
    EXPECT_GT(last, synced) << "there were passes";
    first.quit();
    firstCloud.signOut();
    first.start();
    settle();
    EXPECT_EQ(first.sync->lastSynced(), last);
}

TEST_F(AccountSyncTest, TheFirstLaunchEverSendsItsValuesAsTheOldestOfAll) {
    EXPECT_EQ(first.sync->status(), say::syncUpToDate());
    EXPECT_EQ(first.sync->pendingCount(), 0u);
    EXPECT_TRUE(first.sync->lastSynced());
    EXPECT_EQ(server.records("ada", "QuorviAccount").size(), 12u);
    EXPECT_EQ(inCloud("setting:mode").revision, 1);
    EXPECT_EQ(firstCloud.subscriptions.count("quorvi.private.changes"), 1u);

    // The cloud's values override those of a new machine, also if its first launch was cut short.
    first.model->setVocabulary("Κουζίνα");
    first.dictate("one");
    settle();
    second.start();
    second.kill();  // before the archive knew of the first launch
    startSecond();
    EXPECT_EQ(second.model->vocabulary(), "Κουζίνα");
    EXPECT_EQ(second.texts(), Texts{"one"});
    EXPECT_EQ(second.values(), first.values());
    EXPECT_EQ(second.sync->status(), say::syncUpToDate());

    // A setting that the user chooses with the first launch is an edit.
    FakeCloudDatabase thirdCloud{clock, server, "ada"};
    SyncMachine third{clock, thirdCloud};
    third.chosen = {"vocabulary"};
    third.start();
    third.model->setVocabulary("Μαγειρείο");
    settle();
    EXPECT_EQ(first.model->vocabulary(), "Μαγειρείο");
    EXPECT_EQ(third.values(), first.values());
}

TEST_F(AccountSyncTest, AnotherCloudIsANewBeginningWithTheSameData) {
    FakeCloudServer other{clock};
    FakeCloudDatabase firstOther{clock, other, "of another owner"},
        secondOther{clock, other, "of another owner"};
    first.dictate("one");
    settle();
    startSecond();
    second.dictate("two");
    settle();
    const auto choose = [this](SyncMachine& machine, CloudDatabase& cloud, const char* address) {
        machine.kill();
        machine.cloud = &cloud;
        machine.address = address;
        machine.wholeUpTo = 500;  // the journal is used
        machine.start();
        settle();
        EXPECT_EQ(machine.sync->status(), say::syncUpToDate()) << address;
    };
    choose(first, firstOther, "another cloud");
    EXPECT_EQ(other.records("of another owner", "QuorviAccount").size(), 14u);
    first.model->setVocabulary("there");
    first.history->remove(first.history->records()[0].id);
    second.dictate("three");
    settle();
    EXPECT_EQ(second.texts(), (Texts{"three", "two", "one"})) << "of the first cloud";
    choose(second, secondOther, "another cloud");
    EXPECT_EQ(second.texts(), (Texts{"three", "one"}));
    EXPECT_EQ(second.values(), first.values());
    // To the database of one machine alone, which is no account, and back.
    FakeCloudDatabase alone{clock, other, "first"}, anew{clock, other, "made again"};
    choose(first, alone, "");
    first.dictate("four");
    choose(first, anew, "");
    choose(first, firstCloud, "a cloud");
    choose(second, secondCloud, "a cloud");
    EXPECT_EQ(second.texts(), (Texts{"four", "three", "one"}));
    EXPECT_EQ(second.values(), first.values());
    EXPECT_EQ(second.model->vocabulary(), "there");
}

TEST_F(AccountSyncTest, AChangeArrivesByPushAndIsNotEchoed) {
    startSecond();
    first.dictate("from the first");
    second.model->setRecordingTheme(RecordingTheme::paper);
    clock.advance(2500ms);
    EXPECT_EQ(second.texts(), Texts{"from the first"});
    EXPECT_EQ(first.preferences.string("recordingTheme"), "paper");
    settle();
    const auto sent = [this] {
        return firstCloud.calls[CloudOperation::saveRecords] +
               secondCloud.calls[CloudOperation::saveRecords];
    };
    const auto before = sent();
    clock.advance(60s);
    EXPECT_EQ(sent(), before);
}

TEST_F(AccountSyncTest, AValueThatAStoreAltersBecomesALocalEdit) {
    startSecond();
    // As a newer version of the program would send them.
    SyncLedger other;
    const auto put = [&](const std::string& id, std::optional<SharedString> payload) {
        const SyncItem item(id, std::move(payload), 200'000'000'000'000, other.device(), false);
        auto record = server.record("ada", {"QuorviAccount", id})
                          .value_or(CloudRecord{{"QuorviAccount", id}, "QuorviItem", {}, {}});
        record.payload = bytesOf(item.encoded());
        auto saving = secondCloud.saveRecords({record}, {});
        saving.start();
        clock.settle();
    };
    put("setting:recordingTheme", LocalSnapshot::encode(std::string("neon")));
    put("setting:vocabulary", LocalSnapshot::encode(std::string(1500, 'v')));
    put("setting:future", LocalSnapshot::encode(true));
    put("history:0E3A1C00-0000-4000-8000-000000000001", SharedString("{\"not\":\"a record\"}"));
    TextCorrection empty{.original = "", .replacement = "x"};
    put("correction:" + empty.id, SharedString(encodeCorrection(empty)));
    clock.advance(60s);
    for (const auto* machine : {&first, &second}) {
        EXPECT_EQ(machine->model->recordingTheme(), RecordingTheme::glass);
        EXPECT_EQ(machine->model->vocabulary(), std::string(1200, 'v'));
        EXPECT_EQ(machine->sync->status(), say::syncUpToDate());
    }
    EXPECT_EQ(inCloud("setting:recordingTheme").payload,
              LocalSnapshot::encode(std::string("glass")));
    EXPECT_EQ(inCloud("setting:vocabulary").payload, LocalSnapshot::encode(std::string(1200, 'v')));
}

// The rules and the shortcut must not change during a dictation.
TEST_F(AccountSyncTest, MergedDataWaitsForTheEndOfADictationAndOfChoosingAShortcut) {
    startSecond();
    second.model->beginShortcutCapture();
    first.dictate("one");
    clock.advance(20s);
    EXPECT_EQ(second.texts(), Texts{});
    second.model->endShortcutCapture();
    clock.advance(2s);
    EXPECT_EQ(second.texts(), Texts{"one"});
}

TEST_F(AccountSyncTest, AnEditDuringAnUpdateOfTheStoresIsKept) {
    startSecond();
    second.quit();
    for (int i = 0; i < 50; ++i) first.dictate(std::to_string(i));
    settle();
    // In each run the edit falls into another turn of the second machine's fetch and update.
    for (int turns = 1; turns < 60; turns += 3) {
        second.start();
        for (int turn = 0; turn < turns; ++turn) clock.advance(1us);
        const auto text = "edit " + std::to_string(turns);
        second.dictate(text);
        clock.advance(20s);
        ASSERT_TRUE(std::ranges::count(second.texts(), text)) << "after " << turns << " turns";
        ASSERT_EQ(first.values(), second.values());
        second.quit();
    }
}

}  // namespace
}  // namespace quorvi::test
