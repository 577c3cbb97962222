// The history on a real disk that fails, and in a process that is killed.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

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

mode_t modeOf(const std::filesystem::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 0777;
}

TEST(HistoryFile, IsTheUsersAloneAndBackAfterARestart) {
    const TestFolder folder;
    const auto quorvi = folder.path() / "share" / "Quorvi";
    const auto path = quorvi / "history.json";
    std::filesystem::create_directories(quorvi);
    std::filesystem::permissions(quorvi, std::filesystem::perms(0755));
    EXPECT_EQ(Application(path).dictate("hello there"), std::nullopt);
    EXPECT_EQ(modeOf(quorvi), 0700u);
    EXPECT_EQ(modeOf(path), 0600u);
    Application again(path);
    ASSERT_EQ(again.store.records().size(), 1u);
    EXPECT_EQ(again.store.records()[0].text, "hello there");
}

TEST(HistoryFile, IsTheOldOrTheNewOneWhenTheProgramIsKilledWhileSaving) {
    const TestFolder folder;
    const auto path = folder.path() / "history.json";
    PosixFileStore files;
    const HistoryFile file(files, path);
    const auto first = generated(1'500, 1);
    const auto second = generated(1'400, 2);
    file.save(first);
    int sawFirst = 0, sawSecond = 0;
    for (int round = 0; round < 40; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            for (;;) {
                file.save(second);
                file.save(first);
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(1'000 + round * 613 % 20'000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const auto found = file.load();
        sawFirst += found == first;
        sawSecond += found == second;
    }
    EXPECT_EQ(sawFirst + sawSecond, 40);
    file.save(first);
    EXPECT_EQ(filesIn(folder.path()), 1) << "abandoned drafts take no room for long";
}

TEST(HistoryFile, StaysWhenTheDiskIsFullAndIsWrittenOnceThereIsRoom) {
    const TestFolder folder;
    inAProcessOfItsOwn([&] {
        const auto path = folder.path() / "history.json";
        const auto limit = [](rlim_t size) {
            const rlimit limits{size, RLIM_INFINITY};
            setrlimit(RLIMIT_FSIZE, &limits);
        };
        // Without the right to mount, a limit on files stands in for a small disk.
        const bool isSmall =
            makeOwnMounts() && mount("tmpfs", folder.path().c_str(), "tmpfs", 0, "size=2m") == 0;
        signal(SIGXFSZ, SIG_IGN);
        PosixFileStore files;
        const auto records = generated(1'000);
        HistoryFile(files, path).save(records);
        Application application(path);
        EXPECT_EQ(application.dictate("a few words"), std::nullopt);
        if (isSmall)
            std::ofstream(folder.path() / "filler") << std::string(1'200'000, 'x');
        else
            limit(300'000);
        const auto before = contentOf(path);
        EXPECT_EQ(application.dictate("more words"), say::historyNotSaved());
        EXPECT_EQ(contentOf(path), before);
        EXPECT_EQ(filesIn(folder.path()), isSmall ? 2 : 1) << "a draft that failed is gone";
        std::filesystem::remove(folder.path() / "filler");
        limit(RLIM_INFINITY);
        EXPECT_EQ(application.dictate("and more"), std::nullopt);
        EXPECT_TRUE(HistoryFile(files, path).load() == application.store.records());
        if (!isSmall) return;

        const auto kept = contentOf(path);
        ASSERT_EQ(mount(nullptr, folder.path().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, "size=4m"),
                  0);
        EXPECT_TRUE(application.dictate("cannot be written"));
        EXPECT_EQ(contentOf(path), kept);
        ASSERT_EQ(mount(nullptr, folder.path().c_str(), nullptr, MS_REMOUNT, "size=4m"), 0);
        EXPECT_EQ(application.dictate("can be written again"), std::nullopt);
    });
}

TEST(HistoryFile, IsMadeOnceItsFolderCanBe) {
    const TestFolder folder;
    inAProcessOfItsOwn([&] {
        obeyPermissions();
        const auto path = folder.path() / "Quorvi" / "history.json";
        chmod(folder.path().c_str(), 0500);
        Application application(path);
        EXPECT_EQ(application.store.persistenceError(), std::nullopt) << "there is no history yet";
        EXPECT_TRUE(application.dictate("cannot be written"));
        chmod(folder.path().c_str(), 0700);
        EXPECT_EQ(application.dictate("can be written"), std::nullopt);
        EXPECT_EQ(Application(path).store.records().size(), 2u);

        // What can't be read is left alone.
        const auto content = contentOf(path);
        chmod(path.c_str(), 0000);
        Application blind(path);
        EXPECT_TRUE(blind.store.persistenceError());
        blind.dictate("for this session only");
        EXPECT_EQ(blind.store.records().size(), 1u);
        chmod(path.c_str(), 0600);
        EXPECT_EQ(contentOf(path), content);
    });
    chmod(folder.path().c_str(), 0700);
}

TEST(HistoryFile, ThatIsAFolderIsLeftAlone) {
    const TestFolder folder;
    const auto path = folder.path() / "history.json";
    std::filesystem::create_directory(path);
    Application application(path);
    EXPECT_TRUE(application.store.persistenceError());
    application.dictate("for this session only");
    EXPECT_TRUE(std::filesystem::is_directory(path));
    EXPECT_EQ(filesIn(folder.path()), 1);
}

}  // namespace
}  // namespace quorvi::test
