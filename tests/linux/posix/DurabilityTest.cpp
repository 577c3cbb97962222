// The stores of the user's data on a real disk.

#include "Quorvi/corrections/CorrectionStore.h"
#include "Quorvi/history/HistoryStore.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"
#include "Quorvi/sync/SyncArchive.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "tests/fakes/FakeFileStore.h"
#include "tests/fakes/FakeJournalFiles.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/Waiting.h"
#include "tests/support/contracts/DurabilityContract.h"
#include "tests/support/reference/RandomSyncState.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

// A store's own part of the process.
struct Disk {
    PosixFileStore files;
    LoopScheduler loop;
    SerialExecutor executor{"disk"};
};

// Files as a client uses them that never replaces what it could not read.
class FileRig {
public:
    static constexpr auto file = "file";
    explicit FileRig(const fs::path& folder) : path_(folder / file) {
        try {
            content_ = files_.read(path_).value_or("0");
        } catch (const std::system_error&) {
            isOpen_ = false;
        }
    }
    bool isOpen() const { return isOpen_; }
    void put(int number) { content_ = std::to_string(number) + std::string(100'000, 'x'); }
    bool save() {
        try {
            const std::string_view parts[] = {content_};
            if (isOpen_) files_.replace(path_, parts);
            return isOpen_;
        } catch (const std::system_error&) {
            return false;
        }
    }
    int number() const { return std::stoi(content_); }
    static std::vector<std::string> damaged(const std::string&) { return {}; }

private:
    PosixFileStore files_;
    fs::path path_;
    std::string content_;
    bool isOpen_ = true;
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

class PreferencesRig : protected Disk {
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
    bool save() {
        preferences.flush();
        return !preferences.persistenceError();
    }
    // A write in the background may come between the two keys.
    int number() const {
        const auto first = preferences.integer("first").value_or(0);
        const auto second = preferences.integer("second").value_or(0);
        return first == second || first == second + 1 ? static_cast<int>(second) : -1;
    }
    static std::vector<std::string> damaged(const std::string& whole) {
        return {"", whole.substr(0, whole.size() / 2), std::string(5000, '\xA5')};
    }

protected:
    PropertyListPreferences preferences;
};

class CorrectionsRig : protected PreferencesRig {
public:
    using PreferencesRig::file;
    using PreferencesRig::save;
    explicit CorrectionsRig(const fs::path& folder) : PreferencesRig(folder) {}
    // Rules may also come from the previous version of the preferences.
    bool isOpen() const { return PreferencesRig::isOpen() && !store_.persistenceError(); }
    void put(int number) {
        std::vector<TextCorrection> rules;
        for (int i = 0; i < 100; ++i)
            rules.push_back(
                {.original = "word " + std::to_string(i), .replacement = std::to_string(number)});
        store_.replaceFromSync(rules);
    }
    int number() const {
        std::set<std::string> replacements;
        for (const auto& rule : store_.rules().rules()) replacements.insert(rule.replacement);
        if (replacements.size() != 1) return -1;
        return std::atoi(replacements.begin()->c_str());  // 0 for the example of a first launch
    }
    // A file that can be read, with rules that can't.
    static std::vector<std::string> damaged(const std::string& whole) {
        auto all = std::get<PropertyList::Dictionary>(PropertyList::fromBinary(whole)->value);
        std::vector<std::string> contents = PreferencesRig::damaged(whole);
        for (const auto* rules : {"", "{}", "[{\"id\":"}) {
            const std::string_view text = rules;
            all.insert_or_assign("savedTextCorrections",
                                 PropertyList{Bytes(text.begin(), text.end())});
            contents.push_back(PropertyList{all}.toBinary());
        }
        return contents;
    }

private:
    CorrectionStore store_{preferences, loop};
};

template <class T>
T taken(const Running<T>& running) {
    return std::move(const_cast<T&>(running.value().value()));
}

// The content is a state that was changed at random, as often as the number says.
template <std::size_t WholeUpTo>
class ArchiveRig : Disk {
public:
    static constexpr auto file = "account-sync.json";
    explicit ArchiveRig(const fs::path& folder) {
        Running opening(
            SyncArchive::open({files, journals_, folder / file, executor, loop, WholeUpTo}));
        await(loop, opening);
        if (opening.value()) archive_ = taken(opening);
    }
    bool isOpen() const { return archive_ != nullptr; }
    void put(int number) {
        if (!archive_) return;
        last_ = number;
        takeStep(*archive_, number);
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
        const auto& counts = archive_->state().diagnostics;
        const int steps =
            counts && counts->contains("step") ? static_cast<int>(counts->at("step")) : 0;
        return hashOf(archive_->state()) == expected(steps) ? steps : -1;
    }
    static std::vector<std::string> damaged(const std::string& whole) {
        return {"", "{}", "not JSON", whole.substr(0, whole.size() / 2)};
    }

private:
    static void takeStep(SyncArchive& archive, int number) {
        std::mt19937 random(static_cast<unsigned>(number));
        for (int i = 0; i < 5; ++i) changeAtRandom(archive, random);
        archive.count("step");
    }
    // Of the document but for the device, which is a new one in every new archive.
    static std::size_t hashOf(const SyncState& state) {
        auto document = documentOf(state);
        const auto device = state.ledger.device().view();
        for (auto at = document.find(device); at != document.npos; at = document.find(device, at))
            document.replace(at, device.size(), "DEVICE");
        return std::hash<std::string>()(document);
    }
    // The same steps in memory.
    static std::size_t expected(int steps) {
        static FakeFileStore files;
        static FakeJournalFiles journals;
        static VirtualScheduler scheduler;
        static TurnExecutor executor(scheduler);
        static const auto archive = [] {
            Running opening(SyncArchive::open({files, journals, "/a.json", executor, scheduler}));
            scheduler.settle();
            return taken(opening);
        }();
        static std::vector<std::size_t> hashes{hashOf(archive->state())};
        while (hashes.size() <= static_cast<std::size_t>(steps)) {
            takeStep(*archive, static_cast<int>(hashes.size()));
            hashes.push_back(hashOf(archive->state()));
        }
        return hashes[static_cast<std::size_t>(steps)];
    }

    PosixJournalFiles journals_;
    std::unique_ptr<SyncArchive> archive_;
    int last_ = 0;
};

using Stores = testing::Types<FileRig, HistoryRig, PreferencesRig, CorrectionsRig,
                              ArchiveRig<std::size_t{1} << 30>, ArchiveRig<0>>;

struct StoreNames {
    template <class Rig>
    static std::string GetName(int index) {
        constexpr const char* names[] = {"File",        "History",         "Preferences",
                                         "Corrections", "ArchiveDocument", "ArchiveJournal"};
        return names[index];
    }
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Of, DurabilityContract, Stores, StoreNames);

}  // namespace quorvi::test
