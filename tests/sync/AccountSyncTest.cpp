#include <gtest/gtest.h>

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
    // Long enough for a local change to arrive everywhere.
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
    static std::string historyName(const DictationRecord& record) {
        return "history:" + record.id.string();
    }

    VirtualScheduler clock;
    FakeCloudServer server{clock};
    FakeCloudDatabase firstCloud{clock, server, "ada"};
    FakeCloudDatabase secondCloud{clock, server, "ada"};
    SyncMachine first{clock, firstCloud};
    SyncMachine second{clock, secondCloud};
};

// The one of the controller and the tick: with both every two seconds, one wake-up serves both.
TEST_F(AccountSyncTest, NothingIsWaitedForButTheTickOnceAllIsSent) {
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

// The time of the last pass is kept with what comes next, now and then, and at the end.
TEST_F(AccountSyncTest, PassesWithoutNewsLeaveTheDiskAlone) {
    const auto kept = [this] {
        const std::string name = "\"lastSynced\":";
        const auto& document = first.files.files[SyncMachine::archiveFile];
        return Date{std::stod(document.substr(document.find(name) + name.size()))};
    };
    clock.advance(1min);
    const int before = first.files.attempts;
    const auto synced = first.sync->lastSynced();
    clock.advance(5min);
    EXPECT_EQ(first.files.attempts, before);
    EXPECT_GT(first.sync->lastSynced(), synced) << "there were passes";
    first.dictate("one");
    settle();
    EXPECT_GT(kept(), synced);
    const auto early = clock.date();
    clock.advance(1h);
    EXPECT_GT(kept(), Date{early.secondsSinceReferenceDate + 2900});
    while (kept() >= *first.sync->lastSynced()) clock.advance(1min);
    const auto last = *first.sync->lastSynced();
    first.quit();
    EXPECT_GE(kept(), last);
}

TEST_F(AccountSyncTest, TheFirstLaunchEverSendsItsValuesAsTheOldestOfAll) {
    EXPECT_EQ(first.sync->status(), say::syncUpToDate());
    EXPECT_EQ(first.sync->pendingCount(), 0u);
    EXPECT_TRUE(first.sync->lastSynced());
    EXPECT_EQ(server.records("ada", "QuorviAccount").size(), 11u);
    EXPECT_EQ(inCloud("setting:mode").revision, 1);
    EXPECT_EQ(firstCloud.subscriptions.count("quorvi.private.changes"), 1u);

    // What is there beats what a new machine comes with; what a used one comes with does not lose.
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

    // But what the user chooses with the first launch is an edit.
    FakeCloudDatabase thirdCloud{clock, server, "ada"};
    SyncMachine third{clock, thirdCloud};
    third.chosen = {"vocabulary"};
    third.start();
    third.model->setVocabulary("Μαγειρείο");
    settle();
    EXPECT_EQ(first.model->vocabulary(), "Μαγειρείο");
    EXPECT_EQ(third.values(), first.values());
}

TEST_F(AccountSyncTest, ChangesTravelBothWaysThroughThePush) {
    startSecond();
    first.dictate("from the first");
    second.corrections->save({.original = "teh", .replacement = "the"});
    second.model->setRecordingTheme(RecordingTheme::paper);
    clock.advance(2500ms);
    EXPECT_EQ(second.texts(), Texts{"from the first"});
    EXPECT_EQ(first.rules(), Texts{"teh>the"});
    EXPECT_EQ(first.model->recordingTheme(), RecordingTheme::paper);
    EXPECT_EQ(first.preferences.string("recordingTheme"), "paper");

    // An echo would send them back and forth.
    settle();
    const auto sent = firstCloud.calls[CloudOperation::saveRecords] +
                      secondCloud.calls[CloudOperation::saveRecords];
    clock.advance(60s);
    EXPECT_EQ(firstCloud.calls[CloudOperation::saveRecords] +
                  secondCloud.calls[CloudOperation::saveRecords],
              sent);
}

TEST_F(AccountSyncTest, ADeletionIsNeverUndoneByAStaleCopy) {
    const TextCorrection rule{.original = "teh", .replacement = "the"};
    first.corrections->save(rule);
    first.dictate("one");
    settle();
    startSecond();
    second.quit();
    first.corrections->remove(rule.id);
    first.history->remove(first.history->records()[0].id);
    settle();
    EXPECT_TRUE(inCloud("correction:" + rule.id).deleted());

    // The second machine edits its old copy before it hears of it.
    secondCloud.failAlways(CloudOperation::accountStatus, CloudError(3));
    second.start();
    settle();
    auto edited = second.corrections->rules().rules().at(0);
    edited.replacement = "THE";
    second.corrections->save(edited);
    secondCloud.succeed(CloudOperation::accountStatus);
    clock.advance(60s);
    for (const auto* machine : {&first, &second}) {
        EXPECT_EQ(machine->rules(), Texts{});
        EXPECT_EQ(machine->texts(), Texts{});
    }
}

TEST_F(AccountSyncTest, ADroppedTextIsDroppedEverywhereAndItsFiguresStay) {
    first.dictate("two words", 40);
    settle();
    startSecond();
    EXPECT_EQ(second.texts(), Texts{"two words"});
    second.history->setRetention(TranscriptRetention::thirtyDays);
    settle();
    EXPECT_EQ(first.history->retention(), TranscriptRetention::thirtyDays);
    for (const auto* machine : {&first, &second}) {
        EXPECT_EQ(machine->texts(), Texts{"-"});
        EXPECT_EQ(machine->history->records()[0].wordCount, 2);
    }
    EXPECT_TRUE(inCloud(historyName(first.history->records()[0])).redacted);
}

TEST_F(AccountSyncTest, WhatAMachineCannotTakeIsReplacedByWhatItHas) {
    startSecond();
    // As a newer version of the program would send them.
    SyncLedger other;
    const auto put = [&](const std::string& id, std::optional<SharedString> payload) {
        const SyncItem item(id, std::move(payload), 900'000'000'000'000, other.device(), false);
        auto record = server.record("ada", {"QuorviAccount", id})
                          .value_or(CloudRecord{{"QuorviAccount", id}, "QuorviItem", {}, {}});
        record.payload = bytesOf(SyncLedger::encode(item));
        auto saving = secondCloud.saveRecords({record}, {});
        saving.start();
        clock.settle();
    };
    put("setting:recordingTheme", LocalSnapshot::encode(std::string("neon")));
    put("setting:transcriptRetention", LocalSnapshot::encode(std::int64_t{7}));
    put("setting:vocabulary", LocalSnapshot::encode(std::string(1500, 'v')));
    put("setting:future", LocalSnapshot::encode(true));
    put("history:0E3A1C00-0000-4000-8000-000000000001", SharedString("{\"not\":\"a record\"}"));
    TextCorrection empty{.original = "", .replacement = "x"};
    put("correction:" + empty.id, SharedString(SyncLedger::encode(empty)));
    clock.advance(60s);
    for (const auto* machine : {&first, &second}) {
        EXPECT_EQ(machine->model->recordingTheme(), RecordingTheme::glass);
        EXPECT_EQ(machine->history->retention(), TranscriptRetention::ninetyDays);
        EXPECT_EQ(machine->model->vocabulary(), std::string(1200, 'v'));
        EXPECT_EQ(machine->sync->status(), say::syncUpToDate());
    }
    EXPECT_EQ(inCloud("setting:recordingTheme").payload,
              LocalSnapshot::encode(std::string("glass")));
    EXPECT_EQ(inCloud("setting:vocabulary").payload, LocalSnapshot::encode(std::string(1200, 'v')));
}

TEST_F(AccountSyncTest, OfTwoRulesForOnePhraseTheNewerStays) {
    startSecond();
    second.quit();
    first.corrections->save({.original = "kuzina", .replacement = "old"});
    settle();
    firstCloud.failAlways(CloudOperation::accountStatus, CloudError(3));
    second.start();
    second.corrections->save({.original = "Kuzina ", .replacement = "new"});
    settle();
    firstCloud.succeed(CloudOperation::accountStatus);
    clock.advance(60s);
    EXPECT_EQ(first.rules(), Texts{"Kuzina>new"});
    EXPECT_EQ(second.rules(), first.rules());
}

// A dictation must not find its rules or its shortcut changed half-way.
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

TEST_F(AccountSyncTest, AnEditDuringAnApplicationIsKept) {
    startSecond();
    second.quit();
    for (int i = 0; i < 50; ++i) first.dictate(std::to_string(i));
    settle();
    // The edit falls into every turn of the second machine's fetch and application, one run each.
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

// It was applied, and the program died before the archive said so.
TEST_F(AccountSyncTest, WhatTheStoresHoldOfOthersIsNoEditAfterACrash) {
    startSecond();
    second.kill();
    second.preferences.setString("vocabulary", "older");
    {
        Running opening(SyncArchive::open({second.files, second.journals, SyncMachine::archiveFile,
                                           second.turns, second.scheduler}));
        clock.settle();
        const auto& archive = *opening.value();
        archive->merge(
            {"setting:vocabulary", LocalSnapshot::encode(std::string("older")), 5, "Z", false});
        Running persisting(archive->persist());
        clock.settle();
        ASSERT_EQ(persisting.value(), true);
    }
    first.model->setVocabulary("newer");
    settle();
    second.start();
    settle();
    EXPECT_EQ(second.model->vocabulary(), "newer");
    EXPECT_EQ(first.model->vocabulary(), "newer");
}

TEST_F(AccountSyncTest, WhatWasNotSentOrNotAppliedIsTakenUpAtTheNextStart) {
    startSecond();
    second.model->beginShortcutCapture();  // holds the application up
    first.dictate("one");
    firstCloud.failAlways(CloudOperation::saveRecords, CloudError(4));
    first.dictate("two");
    settle();
    first.kill();
    second.quit();
    firstCloud.succeed(CloudOperation::saveRecords);
    first.start();
    second.start();
    clock.advance(60s);
    EXPECT_EQ(second.texts(), (Texts{"two", "one"}));
    EXPECT_EQ(first.texts(), second.texts());
}

}  // namespace
}  // namespace quorvi::test
