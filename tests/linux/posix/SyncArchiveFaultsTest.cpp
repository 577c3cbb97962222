// The journal of the synchronisation on a real disk; DurabilityTest has what all stores promise.

#include <gtest/gtest.h>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/sync/SyncArchive.h"
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

TEST(SyncArchiveFaults, OneProcessHasTheArchiveAtATime) {
    const TestFolder folder;
    Application first(folder.path());
    ASSERT_TRUE(first.archive) << first.failure;
    EXPECT_FALSE(Application(folder.path()).archive);
    first.archive.reset();
    EXPECT_TRUE(Application(folder.path()).archive);
}

}  // namespace
}  // namespace quorvi::test
