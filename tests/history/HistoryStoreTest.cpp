#include "Quorvi/history/HistoryStore.h"

#include <gtest/gtest.h>

#include "Quorvi/history/HistorySearch.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "tests/fakes/FakeFileStore.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/Waiting.h"
#include "tests/support/reference/GeneratedHistory.h"

namespace quorvi::test {
namespace {

class HistoryStoreTest : public testing::Test {
protected:
    void start() {
        store.emplace(HistoryStore::Environment{preferences, files, path, executor, scheduler,
                                                pasteboard, [this] { return calendar; }});
        observer = store->onChange([this] { ++told; });
    }
    void startWith(std::vector<DictationRecord> records) {
        if (!records.empty()) HistoryFile(files, path).save(DictationRecords(std::move(records)));
        files.attempts = 0;
        start();
    }
    void startAndLoad(std::vector<DictationRecord> records = {}) {
        startWith(std::move(records));
        settle();
        EXPECT_FALSE(store->isLoading());
    }
    void settle() {
        executor.runAll();
        scheduler.settle();
        executor.runAll();
        scheduler.settle();
    }
    void dictate(const std::string& text, double daysAgo = 0) {
        store->record(text, 2, "Mail", "automatic",
                      DictationCostEstimate::of(TranscriptionModel::mini), ago(daysAgo));
    }
    Date ago(double days) const {
        return {scheduler.date().secondsSinceReferenceDate - days * 86'400};
    }
    DictationRecord old(const char* text, double daysAgo) const {
        return DictationRecord::make(Uuid::random(), ago(daysAgo), text, 1, "Old", "automatic",
                                     true, std::nullopt);
    }
    // The texts of a list; "-" for a dropped one.
    static std::string texts(const DictationRecords& records) {
        std::string all;
        for (const auto& record : records)
            all += (all.empty() ? "" : " ") + (record.text ? record.text->string() : "-");
        return all;
    }
    std::string onDisk() {
        return files.files.contains(path) ? texts(HistoryFile(files, path).load()) : "(no file)";
    }

    const std::filesystem::path path = "data/history.json";
    const Calendar calendar{"Europe/Athens", "en_US"};
    VirtualScheduler scheduler;
    HeldExecutor executor;
    FakePasteboard pasteboard{scheduler};
    MemoryPreferences preferences;
    FakeFileStore files;
    std::optional<HistoryStore> store;
    Subscription observer;
    int told = 0;
};

TEST_F(HistoryStoreTest, KeepsEachDictationAndTellsItsObservers) {
    startAndLoad();
    told = 0;
    dictate("first");
    EXPECT_EQ(told, 1);
    EXPECT_EQ(onDisk(), "(no file)") << "nothing blocks for the disk";
    const auto generation = store->generation();
    dictate("second");
    EXPECT_GT(store->generation(), generation);
    dictate("...");
    settle();
    EXPECT_EQ(onDisk(), "second first") << "a text without words is not recorded";
    EXPECT_EQ(store->records()[0].costEstimate,
              DictationCostEstimate::of(TranscriptionModel::mini));
    EXPECT_EQ(store->records()[0].audioSeconds, 2);

    store->copy(store->records()[0]);
    scheduler.settle();
    EXPECT_EQ(pasteboard.text(), "second");
    store->setKeepTranscripts(false);
    dictate("three more words");
    EXPECT_EQ(store->records()[0].wordCount, 3);
    store->copy(store->records()[0]);
    store->remove(store->records()[1].id);
    settle();
    EXPECT_EQ(onDisk(), "- first");
    EXPECT_EQ(pasteboard.text(), "second") << "there was nothing to copy";
    EXPECT_EQ(files.attempts, 2) << "changes that come together are one write";
    store->clear();
    settle();
    EXPECT_EQ(onDisk(), "");
    startAndLoad();
    EXPECT_FALSE(store->keepTranscripts());
}

TEST_F(HistoryStoreTest, ChangesDuringLoadingAreAppliedToTheFile) {
    startWith({old("b", 2), old("a", 3), old("c", 1)});
    dictate("new");
    dictate("removed");
    store->remove(store->records()[0].id);
    EXPECT_EQ(texts(store->records()), "new");
    EXPECT_FALSE(store->replaceFromSync({})) << "it would lack what is in the file";
    EXPECT_TRUE(store->isLoading());
    settle();
    EXPECT_EQ(texts(store->records()), "new c b a");
    EXPECT_EQ(onDisk(), "new c b a");
    EXPECT_EQ(files.attempts, 1);

    start();
    dictate("lost");
    store->clear();
    dictate("only");
    settle();
    EXPECT_EQ(onDisk(), "only");
}

TEST_F(HistoryStoreTest, AHistoryThatCannotBeReadIsNeverWritten) {
    const std::string newer = R"({"version":2,"records":[]})";
    files.files[path] = newer;
    start();
    dictate("before");
    settle();
    dictate("after");
    EXPECT_FALSE(store->replaceFromSync({}));
    EXPECT_EQ(texts(store->records()), "after before");
    store->setRetention(TranscriptRetention::thirtyDays);
    store->prune(ago(-100));
    store->remove(store->records()[0].id);
    store->clear();
    store->flush();
    settle();
    EXPECT_EQ(files.attempts, 0);
    EXPECT_EQ(files.files[path], newer);
    EXPECT_EQ(store->persistenceError(), say::historyUnreadable());
    try {
        HistoryFile(files, path).load();
        ADD_FAILURE();
    } catch (const std::exception& error) {
        EXPECT_EQ(messageOf(error), say::historyFromNewerVersion());
    }
}

TEST_F(HistoryStoreTest, OnlyTheLatestWriteIsReported) {
    startAndLoad();
    files.full = true;
    dictate("one");
    settle();
    EXPECT_EQ(store->persistenceError(), say::historyNotSaved());
    files.full = false;
    dictate("two");
    settle();
    EXPECT_EQ(store->persistenceError(), std::nullopt);

    // A failed write is not reported if a later one has been scheduled.
    files.full = true;
    dictate("three");
    executor.runAll();
    files.full = false;
    dictate("four");
    told = 0;
    scheduler.settle();
    EXPECT_EQ(told, 0);
    settle();
    EXPECT_EQ(store->persistenceError(), std::nullopt);
    EXPECT_EQ(onDisk(), "four three two one");
}

TEST_F(HistoryStoreTest, DropsTextsAsTheRetentionSays) {
    preferences.setInteger("transcriptRetention", 0);
    startAndLoad({old("new", 1), old("older", 40), old("oldest", 100)});
    EXPECT_EQ(files.attempts, 0);
    store->setRetention(TranscriptRetention::thirtyDays);
    settle();
    EXPECT_EQ(onDisk(), "new - -");
    EXPECT_EQ(preferences.integer("transcriptRetention"), 30);
    store->setRetention(TranscriptRetention::forever);
    settle();
    EXPECT_EQ(files.attempts, 1);

    // Texts are dropped when a record is added, time passes, a list is synchronised, or the file is
    // loaded.
    store->setRetention(TranscriptRetention::ninetyDays);
    dictate("future", -95);
    EXPECT_EQ(texts(store->records()), "future - - -");
    EXPECT_TRUE(store->replaceFromSync(DictationRecords({old("x", 1), old("y", 91)})));
    EXPECT_EQ(texts(store->records()), "x -");
    const auto generation = store->generation();
    EXPECT_TRUE(
        store->replaceFromSync(DictationRecords({store->records()[0], store->records()[1]})));
    EXPECT_EQ(store->generation(), generation) << "the same list is no change";
    scheduler.advance(std::chrono::hours(24 * 90));
    store->prune(scheduler.date());
    settle();
    EXPECT_EQ(onDisk(), "- -");
    preferences.remove("transcriptRetention");
    startAndLoad({old("old", 91)});
    EXPECT_EQ(onDisk(), "-");
    preferences.setCouldBeRead(false);
    startAndLoad({old("old", 1'000)});
    dictate("new");
    settle();
    EXPECT_EQ(onDisk(), "new old") << "the choice is not known";
}

TEST_F(HistoryStoreTest, FlushingWritesEverythingAtOnceEvenBeforeTheFileWasRead) {
    startWith({old("old", 1)});
    dictate("new");
    store->flush();
    EXPECT_EQ(onDisk(), "new old");
    dictate("last");
    store->flush();
    EXPECT_EQ(onDisk(), "last new old");
    settle();
    EXPECT_EQ(texts(store->records()), "last new old");
    EXPECT_EQ(files.attempts, 2);
    dictate("at the end");
    store.reset();
    settle();
    EXPECT_EQ(onDisk(), "at the end last new old") << "what was scheduled is still written";
}

TEST_F(HistoryStoreTest, IsSearchedInTheBackground) {
    startAndLoad(GeneratedHistory(600, scheduler.date()).take());
    HistorySearch search(executor, scheduler);
    dictate("A Café of its own");
    std::stop_source stop;
    const Running<HistoryMatches> pointless(search.find(store->records(), "caf", stop.get_token()));
    const Running<HistoryMatches> wanted(search.find(store->records(), "OF ITS", {}));
    stop.request_stop();
    settle();
    EXPECT_TRUE(pointless.cancelled());
    ASSERT_TRUE(wanted.value());
    ASSERT_EQ(wanted.value()->size(), 1u);
    EXPECT_EQ((*wanted.value())[0].text, "A Café of its own");
}

}  // namespace
}  // namespace quorvi::test
