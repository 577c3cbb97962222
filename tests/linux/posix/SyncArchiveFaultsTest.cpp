// The synchronisation's files on a real disk that fails, and in a process that is killed.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <charconv>
#include <cstdlib>
#include <iostream>
#include <thread>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/sync/SyncArchive.h"
#include "tests/fakes/FakeFileStore.h"
#include "tests/fakes/FakeJournalFiles.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/FullDisk.h"
#include "tests/support/Process.h"
#include "tests/support/TestFolder.h"
#include "tests/support/Waiting.h"
#include "tests/support/reference/RandomSyncState.h"

namespace quorvi::test {
namespace {

constexpr std::size_t wholeUpTo = 20'000;

template <class T>
T taken(const Running<T>& running) {
    return std::move(const_cast<T&>(running.value().value()));
}

// The archive in a folder, as the application has it.
struct Application {
    explicit Application(const std::filesystem::path& folder) {
        Running opening(SyncArchive::open(
            {files, journals, folder / "account-sync.json", executor, scheduler, wholeUpTo}));
        EXPECT_TRUE(await(scheduler, opening));
        failure = opening.failure();
        if (failure.empty()) archive = taken(opening);
    }
    bool persist() {
        Running persisting(archive->persist());
        EXPECT_TRUE(await(scheduler, persisting));
        return persisting.value().value();
    }
    // Makes the document so large that changes go into the journal.
    void fill() {
        archive->merge({"setting:large", std::string(wholeUpTo, 'x'), 1, "Z", false});
        EXPECT_TRUE(persist());
    }

    PosixFileStore files;
    PosixJournalFiles journals;
    LoopScheduler scheduler;
    SerialExecutor executor{"sync"};
    std::string failure;
    std::unique_ptr<SyncArchive> archive;
};

// The document but for the device, which is a new one in every new archive.
std::string plainly(const SyncState& state) {
    auto document = documentOf(state);
    const auto device = state.ledger.device().view();
    for (auto at = document.find(device); at != document.npos; at = document.find(device, at))
        document.replace(at, device.size(), "DEVICE");
    return document;
}

// Some changes that depend on nothing but the number of the step, which is kept with them.
template <class Archive>
void takeStep(Archive& archive, unsigned step) {
    std::mt19937 random(step);
    for (int i = 0; i < 5; ++i) changeAtRandom(archive, random);
    archive.count("step");
}

unsigned stepOf(const SyncState& state) {
    if (!state.diagnostics) return 0;
    const auto found = state.diagnostics->find("step");
    return found == state.diagnostics->end() ? 0 : static_cast<unsigned>(found->second);
}

// Run in a process of its own: takes steps for ever, and says which ones are kept.
TEST(SyncArchiveDrill, DISABLED_TakesSteps) {
    Application application(std::getenv("QUORVI_DRILL_FOLDER"));
    ASSERT_TRUE(application.archive) << application.failure;
    auto& archive = *application.archive;
    unsigned step = stepOf(archive.state());
    std::cout << "kept " << step << std::endl;
    int underWay = 0;
    for (;;) {
        takeStep(archive, step++);
        ++underWay;
        archive.persist([&underWay, step](bool saved) {
            --underWay;
            if (saved) std::cout << "kept " << step << std::endl;
        });
        if (step % 40 == 0) archive.flush();
        // Several writes wait for each other now and then.
        until(application.scheduler, [&] { return underWay < 1 + static_cast<int>(step % 3); });
    }
}

TEST(SyncArchiveFaults, NothingThatWasKeptIsLostWhenTheProgramIsKilled) {
    const TestFolder folder;
    // The same steps in memory.
    FakeFileStore files;
    FakeJournalFiles journals;
    VirtualScheduler scheduler;
    TurnExecutor executor(scheduler);
    Running opening(SyncArchive::open({files, journals, "/a.json", executor, scheduler}));
    scheduler.settle();
    const auto memory = taken(opening);
    std::vector<std::string> contents{plainly(memory->state())};

    std::mt19937 random(7);
    unsigned kept = 0;
    for (int round = 0; round < 40 && !HasFailure(); ++round) {
        {
            Process drill({"/proc/self/exe", "--gtest_filter=*DISABLED_TakesSteps",
                           "--gtest_also_run_disabled_tests"},
                          {"QUORVI_DRILL_FOLDER=" + folder.path().string()});
            const auto next = [&] {
                const auto line = drill.readLine();
                if (!line.starts_with("kept ")) return false;
                std::from_chars(line.data() + 5, line.data() + line.size(), kept);
                return true;
            };
            while (!next()) continue;
            for (auto lines = random() % 60; lines > 0; --lines) next();
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 3'000));
            drill.kill();
            // What it had still said counts too.
            const auto rest = drill.readAll();
            const auto end = rest.rfind('\n');
            const auto last = end == rest.npos ? end : rest.rfind("kept ", end);
            if (last != rest.npos) std::from_chars(rest.data() + last + 5, rest.data() + end, kept);
        }
        const Application again(folder.path());
        ASSERT_TRUE(again.archive) << again.failure;
        const auto step = stepOf(again.archive->state());
        ASSERT_GE(step, kept) << "round " << round;
        while (contents.size() <= step) {
            takeStep(*memory, static_cast<unsigned>(contents.size() - 1));
            contents.push_back(plainly(memory->state()));
        }
        ASSERT_TRUE(plainly(again.archive->state()) == contents[step]) << "round " << round;
    }
    EXPECT_GT(kept, 500u);
}

TEST(SyncArchiveFaults, ATornTailIsWhatWasNeverKeptAndDamageBeforeItIsRefused) {
    const TestFolder folder;
    const auto file = folder.path() / "account-sync.journal";
    std::vector<std::uint64_t> sizes;  // of the journal after each step
    std::vector<std::string> contents;
    {
        Application application(folder.path());
        application.fill();
        for (unsigned step = 0; step < 6; ++step) {
            sizes.push_back(std::filesystem::file_size(file));
            contents.push_back(plainly(application.archive->state()));
            takeStep(*application.archive, step);
            ASSERT_TRUE(application.persist());
        }
        sizes.push_back(std::filesystem::file_size(file));
        contents.push_back(plainly(application.archive->state()));
    }
    const auto journal = contentOf(file);
    ASSERT_EQ(journal.size(), sizes.back());
    std::size_t whole = 0;
    for (std::uint64_t size = 0; size <= journal.size(); size += 1 + journal.size() / 97) {
        while (whole + 1 < sizes.size() && sizes[whole + 1] <= size) ++whole;
        for (const auto& tail : {std::string(), std::string(300, '\0'), std::string(70, '\x17')}) {
            folder.write(file.filename(), journal.substr(0, size) + tail);
            Application application(folder.path());
            ASSERT_TRUE(application.archive) << application.failure;
            ASSERT_TRUE(plainly(application.archive->state()) == contents[whole]) << size;
            // It goes on behind what is whole.
            application.archive->count("more");
            ASSERT_TRUE(application.persist());
            const auto kept = plainly(application.archive->state());
            application.archive.reset();
            const Application again(folder.path());
            ASSERT_TRUE(again.archive) << again.failure;
            ASSERT_TRUE(plainly(again.archive->state()) == kept) << size;
        }
    }
    auto damaged = journal;
    damaged[sizes[2] + 20] ^= 1;
    folder.write(file.filename(), damaged);
    EXPECT_FALSE(Application(folder.path()).archive);
    EXPECT_EQ(contentOf(file), damaged);
    // The program died when the document had been replaced and the journal was still to be cut.
    folder.write(file.filename(), journal);
    std::string kept;
    {
        Application application(folder.path());
        for (unsigned step = 6; step < 12; ++step) takeStep(*application.archive, step);
        ASSERT_TRUE(application.archive->flush());
        kept = plainly(application.archive->state());
    }
    EXPECT_EQ(contentOf(file), "");
    folder.write(file.filename(), journal);
    {
        Application application(folder.path());
        ASSERT_TRUE(application.archive) << application.failure;
        EXPECT_TRUE(plainly(application.archive->state()) == kept);
        application.archive->count("more");
        ASSERT_TRUE(application.persist());
        kept = plainly(application.archive->state());
    }
    EXPECT_TRUE(plainly(Application(folder.path()).archive->state()) == kept);
}

TEST(SyncArchiveFaults, AFullDiskLosesNothingThatWasKept) {
    for (const bool isLarge : {false, true}) {
        const TestFolder folder;
        std::string kept;
        {
            Application application(folder.path());
            if (isLarge) application.fill();
            application.archive->setOwner("me");
            ASSERT_TRUE(application.persist());
            kept = plainly(application.archive->state());
            application.archive->setOwner(std::string(3'000, 'y'));
            {
                const FullDisk full(isLarge ? 1'000 : 16);
                EXPECT_FALSE(application.persist());
                EXPECT_FALSE(application.archive->flush());
                application.archive.reset();
            }
            Application again(folder.path());
            ASSERT_TRUE(again.archive) << again.failure;
            EXPECT_TRUE(plainly(again.archive->state()) == kept);
            again.archive->setOwner("you");
            ASSERT_TRUE(again.persist());
            kept = plainly(again.archive->state());
        }
        EXPECT_TRUE(plainly(Application(folder.path()).archive->state()) == kept);
    }
}

TEST(SyncArchiveFaults, IsTheUsersAloneAndOneProcesssAlone) {
    const TestFolder folder;
    const auto quorvi = folder.path() / "share" / "Quorvi";
    Application first(quorvi);
    ASSERT_TRUE(first.archive) << first.failure;
    EXPECT_FALSE(Application(quorvi).archive) << "another process has it";
    first.fill();
    first.archive->setOwner("me");
    ASSERT_TRUE(first.persist());
    const auto modeOf = [](const std::filesystem::path& path) {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 0777;
    };
    EXPECT_EQ(modeOf(quorvi), 0700u);
    EXPECT_EQ(modeOf(quorvi / "account-sync.json"), 0600u);
    EXPECT_EQ(modeOf(quorvi / "account-sync.journal"), 0600u);
    first.archive.reset();
    EXPECT_TRUE(Application(quorvi).archive) << "the other one has ended";
}

TEST(SyncArchiveFaults, WhatIsNotUnderstoodIsLeftAlone) {
    const TestFolder folder;
    const auto file = folder.path() / "account-sync.json";
    for (const auto* content : {"", "{}", "not JSON"}) {
        folder.write(file.filename(), content);
        EXPECT_FALSE(Application(folder.path()).archive) << content;
        EXPECT_EQ(contentOf(file), content);
    }
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_FALSE(Application(folder.path()).archive);
}

}  // namespace
}  // namespace quorvi::test
