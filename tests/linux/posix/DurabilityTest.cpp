// The stores of the user's data on a real disk.

#include <sched.h>
#include <sys/mount.h>

#include "Quorvi/history/HistoryStore.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"
#include "Quorvi/sync/SyncArchive.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/support/Waiting.h"
#include "tests/support/contracts/DurabilityContract.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

// A store's own part of the process.
struct Disk {
    PosixFileStore files;
    LoopScheduler loop;
    SerialExecutor executor{"disk"};
};

class HistoryRig : Disk {
public:
    static constexpr auto file = "history.json";
    explicit HistoryRig(const fs::path& folder)
        : store_({keepingForever(), files, folder / file, executor, loop, pasteboard_,
                  [this] { return calendar_; }}) {
        until(loop, [this] { return !store_.isLoading(); });
        isOpen_ = !store_.persistenceError();
    }
    bool isOpen() const { return isOpen_; }
    void put(int number) {
        std::vector<DictationRecord> records;
        for (int i = 0; i < 300; ++i)
            records.push_back(DictationRecord::make(Uuid::random(), loop.date(),
                                                    std::to_string(number), 1, "Mail", "automatic",
                                                    true, std::nullopt));
        store_.replaceFromSync(DictationRecords(std::move(records)));
    }
    // The outcome is also published.
    bool save() {
        if (!isOpen_) return false;
        const bool saved = store_.flusher()();
        return until(loop, [&] { return saved == !store_.persistenceError(); }) && saved;
    }
    int number() const {
        std::set<std::string> texts;
        for (const auto& record : store_.records()) texts.insert(record.text->string());
        return texts.empty() ? 0 : texts.size() > 1 ? -1 : std::stoi(*texts.begin());
    }
    static std::vector<std::string> damaged(const std::string& whole) {
        return {"", "{}", "not JSON", whole.substr(0, whole.size() / 2)};
    }

private:
    Preferences& keepingForever() {
        preferences_.setInteger("transcriptRetention", 0);
        return preferences_;
    }

    MemoryPreferences preferences_;
    FakePasteboard pasteboard_{loop};
    const Calendar calendar_{"Europe/Athens", "en_US"};
    HistoryStore store_;
    bool isOpen_ = false;
};

class PreferencesRig : Disk {
public:
    static constexpr auto file = "preferences.plist";
    explicit PreferencesRig(const fs::path& folder)
        : preferences(files, folder / file, executor, loop) {}
    bool isOpen() const { return preferences.couldBeRead(); }
    void put(int number) {
        preferences.setInteger("first", number);
        preferences.setString("text", std::string(static_cast<std::size_t>(number % 9000), 'x'));
        preferences.setInteger("second", number);
    }
    // Ends when nothing is left to write in the background either.
    bool save() {
        preferences.flush();
        bool isIdle = false;
        executor.run([&] { loop.post([&] { isIdle = true; }); });
        return until(loop, [&] { return isIdle; }) && !preferences.persistenceError();
    }
    // A write in the background may come between the two keys.
    int number() const {
        const auto first = preferences.integer("first").value_or(0);
        const auto second = preferences.integer("second").value_or(0);
        return first == second || first == second + 1 ? static_cast<int>(second) : -1;
    }
    static std::vector<std::string> damaged(const std::string& whole) {
        return {"", whole.substr(0, whole.size() / 2), std::string(5000, '\xA5'),
                PropertyList{PropertyList::Array{}}.toBinary(),
                "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict/></plist>"};
    }

private:
    PropertyListPreferences preferences;
};

// Each part of the content repeats its number.
template <std::size_t WholeUpTo>
class ArchiveRig : Disk {
public:
    static constexpr auto file = "account-sync.json";
    explicit ArchiveRig(const fs::path& folder) {
        Running opening(
            SyncArchive::open({files, journals_, folder / file, executor, loop, WholeUpTo}));
        await(loop, opening);
        if (opening.value())
            archive_ = std::move(const_cast<std::unique_ptr<SyncArchive>&>(*opening.value()));
    }
    bool isOpen() const { return archive_ != nullptr; }
    void put(int number) {
        if (!archive_) return;
        last_ = number;
        const auto size = static_cast<std::size_t>(number) * 397 % 3000;
        const auto value = std::to_string(number) + std::string(size, ' ');
        archive_->capture(LocalChanges{{"setting:own", value, false}}, false, {1e6});
        archive_->merge({"setting:foreign", value, number, "another device", false});
        archive_->setEngineState(value);
        archive_->setOwner(value);
        if (number % 3 != 0) archive_->persist([](bool) {});  // several wait for each other
    }
    bool save() {
        if (!archive_) return false;
        if (last_ % 40 == 0) return archive_->flush();
        Running persisting(archive_->persist());
        await(loop, persisting);
        return persisting.value().value();
    }
    int number() const {
        const auto& state = archive_->state();
        if (!state.owner && state.ledger.items().empty()) return 0;
        for (const auto* id : {"setting:own", "setting:foreign"})
            if (const auto* item = state.ledger.item(id); !item || item->payload != state.owner)
                return -1;
        return state.engineState == state.owner ? std::stoi(state.owner->string()) : -1;
    }
    static std::vector<std::string> damaged(const std::string& whole) {
        return {"", "{}", "not JSON", whole.substr(0, whole.size() / 2)};
    }

private:
    PosixJournalFiles journals_;
    std::unique_ptr<SyncArchive> archive_;
    int last_ = 0;
};

using Stores =
    testing::Types<HistoryRig, PreferencesRig, ArchiveRig<std::size_t{1} << 30>, ArchiveRig<0>>;

struct StoreNames {
    template <class Rig>
    static std::string GetName(int index) {
        constexpr const char* names[] = {"History", "Preferences", "ArchiveDocument",
                                         "ArchiveJournal"};
        return names[index];
    }
};

using Archive = ArchiveRig<5000>;  // journals after the large document of 7

TEST(SyncArchiveJournal, DropsATornEndAndRefusesDamageBeforeIt) {
    const TestFolder folder;
    const auto file = folder.path() / "account-sync.journal";
    std::vector<std::size_t> sizes;  // of the journal with 7, 8, 9 …
    const auto expectNumber = [&](int number) {
        EXPECT_EQ(Archive(folder.path()).number(), number);
    };
    const auto keep = [&](int number) {
        Archive archive(folder.path());
        archive.put(number);
        ASSERT_TRUE(archive.save());
    };
    for (int number = 7; number <= 12; ++number) {
        keep(number);
        sizes.push_back(contentOf(file).size());
    }
    const auto journal = contentOf(file);
    for (std::size_t size = 0; size <= journal.size(); size += 1 + journal.size() / 97)
        for (const auto& tail : {std::string(), std::string(300, '\0'), std::string(70, '\x17')}) {
            folder.write(file.filename(), journal.substr(0, size) + tail);
            const auto whole = std::ranges::upper_bound(sizes, size) - sizes.begin();
            expectNumber(static_cast<int>(whole) + 6);
            keep(13);  // it continues after what is whole
            expectNumber(13);
        }
    auto damaged = journal;
    damaged[sizes[2] + 20] ^= 1;
    folder.write(file.filename(), damaged);
    EXPECT_FALSE(Archive(folder.path()).isOpen());
    EXPECT_EQ(contentOf(file), damaged);

    // The program died after it had replaced the document and before it cut the journal.
    folder.write(file.filename(), journal);
    keep(80);
    EXPECT_EQ(contentOf(file), "");
    folder.write(file.filename(), journal);
    expectNumber(80);
    keep(81);
    expectNumber(81);
}

TEST(SyncArchiveJournal, IsOpenInOneProcessAtATime) {
    const TestFolder folder;
    {
        const Archive first(folder.path());
        EXPECT_TRUE(first.isOpen());
        EXPECT_FALSE(Archive(folder.path()).isOpen());
    }
    EXPECT_TRUE(Archive(folder.path()).isOpen());
}

// The contract limits the size of files instead, for any user.
TEST(HistoryOnASmallDisk, StaysWhenTheDiskIsFullOrReadOnlyAndIsWrittenAfterwards) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may mount";
    const TestFolder folder;
    inAProcessOfItsOwn([&] {
        const auto& place = folder.path();
        const auto remount = [&](unsigned long flags, const char* size) {
            return ::mount("tmpfs", place.c_str(), "tmpfs", flags, size);
        };
        ASSERT_EQ(::unshare(CLONE_NEWNS), 0);
        ASSERT_EQ(::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
        ASSERT_EQ(remount(0, "size=1m"), 0);
        HistoryRig history(place);
        history.put(1);
        ASSERT_TRUE(history.save());
        const auto path = place / HistoryRig::file;
        const auto before = contentOf(path);
        std::ofstream(place / "filler") << std::string(2 << 20, 'x');
        history.put(2);
        EXPECT_FALSE(history.save());
        EXPECT_EQ(contentOf(path), before);
        EXPECT_EQ(std::distance(fs::directory_iterator(place), {}), 2) << "a draft is left";
        fs::remove(place / "filler");
        history.put(3);
        EXPECT_TRUE(history.save());
        EXPECT_EQ(HistoryRig(place).number(), 3);

        ASSERT_EQ(remount(MS_REMOUNT | MS_RDONLY, "size=1m"), 0);
        history.put(4);
        EXPECT_FALSE(history.save());
        EXPECT_EQ(HistoryRig(place).number(), 3);
        ASSERT_EQ(remount(MS_REMOUNT, "size=1m"), 0);
        history.put(5);
        EXPECT_TRUE(history.save());
        EXPECT_EQ(HistoryRig(place).number(), 5);
    });
}

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Of, DurabilityContract, Stores, StoreNames);

}  // namespace quorvi::test
