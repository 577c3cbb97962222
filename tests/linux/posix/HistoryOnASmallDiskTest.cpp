// The history on a real disk without room, and on one that turns read-only.

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "Quorvi/history/HistoryStore.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestFolder.h"
#include "tests/support/Waiting.h"
#include "tests/support/reference/GeneratedHistory.h"

namespace quorvi::test {
namespace {

MemoryPreferences keepingForever() {
    MemoryPreferences preferences;
    preferences.setInteger("transcriptRetention", 0);
    return preferences;
}

// The real store in a folder, as the application has it.
struct Application {
    explicit Application(const std::filesystem::path& file)
        : store({preferences, files, file, executor, scheduler, pasteboard,
                 [this] { return calendar; }}) {
        EXPECT_TRUE(until(scheduler, [this] { return !store.isLoading(); }));
    }
    // One dictation, and the outcome of its being written.
    std::optional<Message> dictate(const std::string& text) {
        store.record(text, 1, "Mail", "automatic", TranscriptionModel::mini, scheduler.date());
        store.flush();
        bool turned = false;
        scheduler.post([&] { turned = true; });
        EXPECT_TRUE(until(scheduler, [&] { return turned; }));
        return store.persistenceError();
    }

    LoopScheduler scheduler;
    SerialExecutor executor{"history"};
    FakePasteboard pasteboard{scheduler};
    MemoryPreferences preferences = keepingForever();
    PosixFileStore files;
    const Calendar calendar{"Europe/Athens", "en_US"};
    HistoryStore store;
};

DictationRecords generated(std::size_t count, unsigned seed = 1) {
    return DictationRecords(GeneratedHistory(count, {800'000'000}, seed).take());
}

std::ptrdiff_t filesIn(const std::filesystem::path& folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

TEST(HistoryOnASmallDisk, StaysWhenTheDiskIsFullOrReadOnlyAndIsWrittenAfterwards) {
    // DurabilityTest limits the size of files instead, for any user.
    if (geteuid() != 0) GTEST_SKIP() << "only root may mount";
    const TestFolder folder;
    inAProcessOfItsOwn([&] {
        const auto path = folder.path() / "history.json";
        ASSERT_EQ(unshare(CLONE_NEWNS), 0);
        ASSERT_EQ(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
        ASSERT_EQ(mount("tmpfs", folder.path().c_str(), "tmpfs", 0, "size=2m"), 0);
        PosixFileStore files;
        const auto records = generated(1'000);
        HistoryFile(files, path).save(records);
        Application application(path);
        EXPECT_EQ(application.dictate("a few words"), std::nullopt);
        std::ofstream(folder.path() / "filler") << std::string(1'200'000, 'x');
        const auto before = contentOf(path);
        EXPECT_EQ(application.dictate("more words"), say::historyNotSaved());
        EXPECT_EQ(contentOf(path), before);
        EXPECT_EQ(filesIn(folder.path()), 2) << "a draft that failed is gone";
        std::filesystem::remove(folder.path() / "filler");
        EXPECT_EQ(application.dictate("and more"), std::nullopt);
        EXPECT_TRUE(HistoryFile(files, path).load() == application.store.records());

        const auto kept = contentOf(path);
        ASSERT_EQ(mount(nullptr, folder.path().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, "size=4m"),
                  0);
        EXPECT_TRUE(application.dictate("cannot be written"));
        EXPECT_EQ(contentOf(path), kept);
        ASSERT_EQ(mount(nullptr, folder.path().c_str(), nullptr, MS_REMOUNT, "size=4m"), 0);
        EXPECT_EQ(application.dictate("can be written again"), std::nullopt);
    });
}

}  // namespace
}  // namespace quorvi::test
