#include "Quorvi/sync/SyncArchive.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeFileStore.h"
#include "tests/fakes/FakeJournalFiles.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/Waiting.h"
#include "tests/support/reference/RandomSyncState.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

const std::filesystem::path document = "/home/Quorvi/account-sync.json";
const std::filesystem::path journal = "/home/Quorvi/account-sync.journal";

struct Disk {
    FakeFileStore files;
    FakeJournalFiles journals;
};

// One run of a program.
struct Program {
    explicit Program(Disk& d, std::size_t wholeUpTo = 20'000) : disk(d) {
        Running opening(SyncArchive::open({disk.files, disk.journals, document, executor, scheduler,
                                           wholeUpTo, [this] { return storesAreKept; }}));
        scheduler.settle();
        failure = opening.failure();
        if (opening.ended() && failure.empty())
            archive = std::move(const_cast<std::unique_ptr<SyncArchive>&>(*opening.value()));
    }
    bool persist() {
        Running persisting(archive->persist());
        scheduler.settle();
        return persisting.value().value();
    }
    void fill(std::size_t bytes) {
        archive->merge({"setting:large", std::string(bytes, 'x'), 1, "Z", false});
    }

    Disk& disk;
    bool storesAreKept = true;
    VirtualScheduler scheduler;
    TurnExecutor executor{scheduler};
    std::unique_ptr<SyncArchive> archive;
    std::string failure;
};

TEST(SyncArchive, ThePersistedStateIsReadAgain) {
    for (const std::size_t wholeUpTo :
         {std::size_t{0}, std::size_t{20'000}, std::size_t{1} << 30}) {
        for (unsigned seed = 1; seed <= 10 && !testing::Test::HasFailure(); ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            std::mt19937 random(seed);
            Disk disk;
            std::string kept;
            for (int round = 0; round < 12; ++round) {
                Program run(disk, wholeUpTo);
                ASSERT_TRUE(run.archive) << run.failure;
                if (round > 0) {
                    ASSERT_EQ(documentOf(run.archive->state()), kept);
                }
                for (auto left = random() % 30; left > 0; --left) {
                    for (auto changes = random() % 9; changes > 0; --changes)
                        changeAtRandom(*run.archive, random);
                    if (random() % 4 == 0) {
                        // The executor's copy equals the state, written or not.
                        Running looking(run.archive->inBackground(
                            [](const SyncState& state) { return documentOf(state); }));
                        run.scheduler.settle();
                        ASSERT_EQ(looking.value(), documentOf(run.archive->state()));
                    }
                    if (random() % 3 == 0) {
                        ASSERT_TRUE(run.persist());
                    }
                    if (random() % 9 == 0) run.scheduler.advance(40s);
                }
                ASSERT_TRUE(random() % 4 ? run.persist() : run.archive->flush());
                kept = documentOf(run.archive->state());
            }
            EXPECT_EQ(disk.journals.appends > 0, wholeUpTo < 1 << 30);
        }
    }
}

TEST(SyncArchive, ChangesOfALargeDocumentAreAppendedUntilItIsRewritten) {
    Disk disk;
    Program run(disk);
    run.fill(15'000);
    EXPECT_TRUE(run.persist());
    const auto first = disk.files.files[document];
    EXPECT_EQ(first, documentOf(run.archive->state()));
    EXPECT_EQ(disk.journals.appends, 0) << "there was no document yet";

    run.archive->addPending("setting:large");
    int done = 0;
    for (int i = 0; i < 3; ++i) run.archive->persist([&](bool saved) { done += saved; });
    EXPECT_EQ(done, 0);
    run.scheduler.settle();
    EXPECT_EQ(done, 3);
    EXPECT_EQ(disk.journals.appends, 1);
    EXPECT_TRUE(run.persist());
    EXPECT_EQ(disk.journals.appends, 1) << "there was nothing to write";
    EXPECT_EQ(disk.files.files[document], first);

    run.scheduler.advance(60s);
    EXPECT_EQ(disk.files.files[document], first) << "the journal is short";
    for (int i = 0; i < 2; ++i) {
        run.fill(14'000 + static_cast<std::size_t>(i));
        EXPECT_TRUE(run.persist());
    }
    EXPECT_EQ(disk.files.files[document], first);
    run.scheduler.advance(60s);
    EXPECT_EQ(disk.files.files[document], documentOf(run.archive->state()));
    EXPECT_EQ(disk.journals.files[journal], "");
}

// After a crash, values that the stores lack would count as deleted.
TEST(SyncArchive, IsNeverAheadOfTheStores) {
    for (const std::size_t size : {10, 15'000}) {
        Disk disk;
        Program run(disk);
        run.fill(size);
        ASSERT_TRUE(run.persist());
        const Disk before = disk;
        run.archive->setOwner("me");
        run.storesAreKept = false;
        EXPECT_FALSE(run.persist());
        EXPECT_FALSE(run.archive->flush());
        EXPECT_EQ(disk.files.files, before.files.files);
        EXPECT_EQ(disk.journals.files, before.journals.files);
        run.storesAreKept = true;
        EXPECT_TRUE(run.persist());
        Disk copy = disk;
        EXPECT_EQ(Program(copy).archive->state().owner, "me");
    }
}

TEST(SyncArchive, WorksWithoutAJournal) {
    Disk disk;
    disk.journals.unavailable = true;
    for (int i = 0; i < 3; ++i) {
        Program run(disk);
        run.fill(20'000 + static_cast<std::size_t>(i));
        ASSERT_TRUE(run.persist());
        EXPECT_EQ(disk.files.files[document], documentOf(run.archive->state()));
    }
}

}  // namespace
}  // namespace quorvi::test
