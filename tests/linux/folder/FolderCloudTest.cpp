// The shared folder under a file synchroniser and with file system failures.

#include "Quorvi/platform/linux/folder/FolderCloud.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <memory>
#include <random>
#include <sstream>

#include "Quorvi/platform/linux/folder/FolderComputers.h"
#include "tests/support/FullDisk.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Process.h"
#include "tests/support/Seeds.h"
#include "tests/support/TestFolder.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

constexpr auto zone = "Zone";

CloudRecord record(const std::string& name, const std::string& text, const std::string& tag = {}) {
    return {{zone, name}, "Item", bytesOf(text), tag};
}

std::string textIn(const CloudRecord& one) {
    return std::string(textOf(*one.payload));
}

// Returns the code of the CloudError that the work throws; 0 if none.
int codeOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const CloudError& error) {
        return error.code();
    }
    return 0;
}

// A machine with its folder and the records that it has fetched.
struct Machine {
    Machine(const fs::path& folder_, const fs::path& file_, FolderCloud::Limits limits_ = {})
        : folder(folder_), file(file_), limits(limits_) {
        restart();
    }
    void restart() {
        cloud.reset();
        cloud = std::make_unique<FolderCloud>(folder, file, limits);
    }
    // Returns the new tag.
    std::string save(const std::string& name, const std::string& text,
                     const std::string& tag = {}) {
        const auto results = cloud->saveRecords({record(name, text, tag)});
        if (results.at(0).error) throw *results[0].error;
        return results[0].record.changeTag;
    }
    std::size_t fetch(const std::function<void(const CloudRecord&)>& seen = {}) {
        std::size_t count = 0;
        for (bool more = true; more;) {
            auto page = cloud->recordChanges(zone, token);
            count += page.modified.size();
            for (auto& one : page.modified) {
                if (seen) seen(one);
                records[one.id.name] = std::move(one);
            }
            token = page.token;
            more = page.more;
        }
        return count;
    }
    std::string text(const std::string& name) {
        return records.contains(name) ? textIn(records[name]) : "(none)";
    }

    fs::path folder, file;
    FolderCloud::Limits limits;
    std::unique_ptr<FolderCloud> cloud;
    std::string token;
    std::map<std::string, CloudRecord> records;
};

// Three machines, each with a copy of the folder, and a synchroniser that transfers pieces of files
// in random order. A save contains all words known for the record and a new one, so at the end
// every machine must know every acknowledged word.
class Wanderer {
public:
    explicit Wanderer(unsigned seed) : random_(seed) {
        for (std::size_t i = 0; i < machines; ++i) {
            machines_.push_back(
                std::make_unique<Machine>(home_.path() / ("copy" + std::to_string(i)),
                                          home_.path() / ("machine" + std::to_string(i)),
                                          FolderCloud::Limits{.recordsPerPage = 3,
                                                              .bytesPerPage = 1000,
                                                              .segmentSize = 600,

                                                              .segments = 5}));
            machines_.back()->cloud->saveZone(zone);
        }
        words_.resize(machines);
    }

    void wander(int steps) {
        for (int step = 0; step < steps; ++step) {
            const auto who = pick(machines);
            switch (pick(10)) {
                case 0:
                    machines_[who]->restart();
                    break;
                case 1:
                    machines_[who]->cloud->compact();
                    break;
                case 2:
                    machines_[who]->token.clear();
                    break;
                case 3:
                case 4:
                    fetch(who);
                    break;
                case 5:
                case 6:
                    edit(who, "r" + std::to_string(pick(6)));
                    break;
                default:
                    synchronise();
            }
        }
    }

    void finish() {
        for (int round = 0; round < 2; ++round) {
            for (auto& from : machines_)
                for (auto& to : machines_)
                    if (from != to) mirror(*from, *to);
            for (std::size_t who = 0; who < machines; ++who) fetch(who);
        }
        const auto& first = *machines_[0];
        for (std::size_t who = 0; who < machines; ++who) {
            for (const auto& [name, all] : said_)
                EXPECT_EQ(words_[who][name], all) << "machine " << who << ", " << name;
            // All machines choose the same version, also a new one.
            Machine fresh(machines_[who]->folder, home_.path() / "fresh" / std::to_string(who));
            for (const auto& [name, all] : said_) {
                const auto chosen = first.cloud->fetchRecord({zone, name});
                EXPECT_EQ(machines_[who]->cloud->fetchRecord({zone, name}), chosen);
                EXPECT_EQ(fresh.cloud->fetchRecord({zone, name}), chosen);
            }
        }
    }

private:
    static constexpr std::size_t machines = 3;
    using Words = std::set<std::string>;

    std::size_t pick(std::size_t below) { return random_() % below; }
    template <class T>
    T& any(std::vector<T>& from) {
        return from[pick(from.size())];
    }

    static Words wordsIn(const CloudRecord& one) {
        std::istringstream stream(textIn(one));
        return {std::istream_iterator<std::string>(stream), {}};
    }
    void learn(std::size_t who, const CloudRecord& one) {
        auto& known = words_[who][one.id.name];
        known.merge(wordsIn(one));
        machines_[who]->records[one.id.name] = one;
    }
    void fetch(std::size_t who) {
        machines_[who]->fetch([&](const CloudRecord& one) { learn(who, one); });
    }
    void edit(std::size_t who, const std::string& name) {
        auto& machine = *machines_[who];
        const auto word = "w" + std::to_string(++count_);
        for (int tries = 0; tries < 3; ++tries) {
            std::string text = word;
            for (const auto& known : words_[who][name]) text += " " + known;
            const auto result = machine.cloud->saveRecords(
                {record(name, text, machine.records[name].changeTag)})[0];
            if (!result.error) {
                learn(who, result.record);
                said_[name].insert(word);
                return;
            }
            // A truncated file may have taken the known version with it.
            if (result.error->code() == cloudErrorCode::unknownItem) {
                machine.records[name].changeTag.clear();
                continue;
            }
            if (result.error->code() == cloudErrorCode::networkFailure) return;
            ASSERT_EQ(result.error->code(), cloudErrorCode::serverRecordChanged);
            learn(who, *result.error->serverRecord());
        }
        ADD_FAILURE() << "never accepted";
    }

    static fs::path copyOf(Machine& from, Machine& to) {
        return to.folder / from.cloud->ownFolder().filename();
    }
    // Transfers a file, a part of it, or its deletion to another machine.
    void synchronise() {
        auto &from = *any(machines_), &to = *any(machines_);
        if (&from == &to) return;
        const auto source = from.cloud->ownFolder(), target = copyOf(from, to);
        fs::create_directories(target);
        std::vector<fs::path> here, gone;
        for (const auto& one : fs::directory_iterator(source)) here.push_back(one.path());
        for (const auto& one : fs::directory_iterator(target))
            if (!fs::exists(source / one.path().filename())) gone.push_back(one.path());
        if (!gone.empty() && pick(2)) {
            fs::remove(any(gone));
            return;
        }
        if (here.empty()) return;
        const auto& chosen = any(here);
        auto content = contentOf(chosen);
        if (pick(3) == 0) content.resize(content.size() * pick(8) / 8);
        if (pick(5) == 0) content.resize(content.size() + 30);  // preallocated zeros
        std::ofstream(target / chosen.filename(), std::ios::binary) << content;
        if (pick(5) == 0) {
            std::ofstream(target / ".syncthing.00000001.log.tmp") << content;
            std::ofstream(target / "00000001.sync-conflict-20260101-000000-ABCDEFG.log")
                << "a conflict";
            std::ofstream(to.folder / "Notes.txt") << "of the user's";
        }
    }
    void mirror(Machine& from, Machine& to) {
        const auto source = from.cloud->ownFolder(), target = copyOf(from, to);
        fs::remove_all(target);
        fs::copy(source, target, fs::copy_options::recursive);
    }

    std::mt19937 random_;
    TestFolder home_{true};
    std::vector<std::unique_ptr<Machine>> machines_;
    std::vector<std::map<std::string, Words>> words_;  // by machine and record
    std::map<std::string, Words> said_;                // acknowledged
    int count_ = 0;
};

TEST(FolderCloud, LosesNothingWhateverTheSynchroniserDoes) {
    forEachSeed("QUORVI_SEED", "QUORVI_ROUNDS", 100, [](unsigned seed) {
        Wanderer wanderer(seed);
        wanderer.wander(150);
        wanderer.finish();
    });
}

TEST(FolderCloud, IgnoresDamagedEntries) {
    const TestFolder home;
    Machine writer(home.path() / "a", home.path() / "writer");
    writer.cloud->saveZone(zone);
    writer.save("x", "one");
    writer.save("y", "two");
    const auto content = contentOf(writer.cloud->ownFolder() / "00000001.log");
    const auto target = home.path() / "b" / writer.cloud->ownFolder().filename();
    fs::create_directories(target);
    const auto publish = [&](const std::string& bytes) {
        std::ofstream(target / "00000001.log", std::ios::binary) << bytes;
    };
    for (std::size_t at = 0; at < content.size(); at += 7) {
        auto damaged = content;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x20);
        publish(damaged);
        Machine other(home.path() / "b", home.path() / "other");
        if (!other.cloud->zoneChanges("").modified.empty()) other.fetch();
        for (const auto& [name, one] : other.records)
            EXPECT_EQ(textIn(one), name == "x" ? "one" : "two");
    }
}

// What the random journeys lack: a save with the tag of the other version, and a deleted zone.
TEST(FolderCloud, TakesASaveOverTheChosenOfTwoVersionsOnlyAndNoneIntoADeletedZone) {
    const TestFolder home;
    Machine one(home.path() / "a", home.path() / "one"),
        two(home.path() / "b", home.path() / "two");
    const auto exchange = [&] {
        for (auto [from, to] : {std::pair(&one, &two), std::pair(&two, &one)})
            fs::copy(from->cloud->ownFolder(), to->folder / from->cloud->ownFolder().filename(),
                     fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    };
    one.cloud->saveZone(zone);
    two.cloud->saveZone(zone);  // without knowing of the other: it is one zone
    const auto tags = std::pair(one.save("x", "of one"), two.save("x", "of two"));
    exchange();
    EXPECT_EQ(one.fetch() + two.fetch(), 4u);
    const auto chosen = one.cloud->fetchRecord({zone, "x"});
    const bool isOfOne = textIn(chosen) == "of one";
    EXPECT_EQ(codeOf([&] { one.save("x", "stale", isOfOne ? tags.second : tags.first); }),
              cloudErrorCode::serverRecordChanged);
    one.save("x", "merged", chosen.changeTag);
    exchange();
    EXPECT_EQ(textIn(two.cloud->fetchRecord({zone, "x"})), "merged");
    two.cloud->deleteZone(zone);
    one.save("late", "written without knowing");
    exchange();
    for (auto* machine : {&one, &two})
        EXPECT_EQ(codeOf([&] { machine->fetch(); }), cloudErrorCode::zoneNotFound);
}

TEST(FolderCloud, KeepsItsLogShortAndItsReadersInStep) {
    const TestFolder home;
    const FolderCloud::Limits limits{.segmentSize = 4000, .segments = 20};
    Machine writer(home.path() / "a", home.path() / "writer", limits);
    Machine reader(home.path() / "a", home.path() / "reader", limits);
    writer.cloud->saveZone(zone);
    std::map<std::string, std::string> tags;
    for (int round = 0; round < 60; ++round) {
        std::vector<CloudRecord> batch;
        for (int i = 0; i < 10; ++i) {
            const auto name = "r" + std::to_string(i);
            batch.push_back(record(name, std::to_string(round) + std::string(50, '.'), tags[name]));
        }
        for (const auto& result : writer.cloud->saveRecords(std::move(batch)))
            tags[result.record.id.name] = result.record.changeTag;
        writer.cloud->compact();
        if (round > 30) writer.restart();  // which begins a new segment
        if (round % 7 == 0) reader.fetch();
    }
    std::uintmax_t size = 0;
    for (const auto& one : fs::directory_iterator(writer.cloud->ownFolder()))
        size += one.file_size();
    EXPECT_LT(size, 12'000u);  // of some 130,000 that were written
    EXPECT_LT(std::distance(fs::directory_iterator(writer.cloud->ownFolder()), {}), 25);
    reader.fetch();
    for (const auto& [name, tag] : tags) {
        EXPECT_EQ(reader.text(name), "59" + std::string(50, '.'));
        EXPECT_EQ(reader.records[name].changeTag, tag);
    }
}

TEST(FolderCloud, KeepsNoTextThatWasReplacedHereOrByAnotherMachine) {
    const TestFolder home;
    const FolderCloud::Limits limits{.segmentSize = 400};
    Machine one(home.path() / "a", home.path() / "one", limits);
    Machine two(home.path() / "a", home.path() / "two", limits);
    one.cloud->saveZone(zone);
    for (int i = 0; i < 20; ++i) one.save("kept" + std::to_string(i), "kept");
    const auto tag = one.save("x", "secret");
    one.save("x", "secret, too", tag);
    one.save("y", "secret");
    two.fetch();
    two.save("y", "gone", two.records["y"].changeTag);
    EXPECT_TRUE(one.cloud->isOutdated());
    one.save("x", "gone", one.cloud->fetchRecord({zone, "x"}).changeTag);
    const auto before = contentOf(one.cloud->ownFolder() / "00000002.log");
    one.cloud->compact();
    EXPECT_FALSE(one.cloud->isOutdated());
    EXPECT_EQ(shell("grep -rl secret " + (home.path() / "a").string()), "");
    EXPECT_EQ(contentOf(one.cloud->ownFolder() / "00000002.log"), before) << "nothing to do there";
    // The other machine is gone for good.
    const auto twos = two.cloud->ownFolder();
    one.cloud->remove(*Uuid::parse(twos.filename().string()));
    EXPECT_FALSE(fs::exists(twos));
    Machine fresh(home.path() / "a", home.path() / "fresh");
    // Names that anybody can have written are shown without what would disturb a terminal.
    const auto chosen = home.path() / "chosen";
    storeComputerName(chosen, " Άδα's\x1b[31m \u202ePC\u0085\n");
    nameFolderComputer(one.cloud->ownFolder(), chosen);
    const auto computers = folderComputers(home.path() / "a");
    ASSERT_EQ(computers.size(), 1u);
    EXPECT_EQ(computers[0].name, "Άδα's[31m PC");
    two.token.clear();
    for (auto* machine : {&two, &fresh}) {
        EXPECT_EQ(machine->fetch(), 22u);
        EXPECT_EQ(machine->text("x") + machine->text("y") + machine->text("kept7"), "gonegonekept");
    }
}

TEST(FolderCloud, GoesOnWhenFilesAreDeletedOrAreNotItsOwn) {
    const TestFolder home;
    const auto folder = home.path() / "shared";
    Machine one(folder, home.path() / "one"), two(folder, home.path() / "two");
    one.cloud->saveZone(zone);
    one.save("x", "1");
    two.fetch();
    two.save("y", "2");
    const auto ofOne = one.cloud->ownFolder();
    struct stat status{};
    ASSERT_EQ(stat(folder.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    ASSERT_EQ(stat((ofOne / "00000001.log").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);

    // Foreign files, also under names of our own.
    std::ofstream(folder / Uuid::random().string()) << "a file";
    const auto odd = folder / Uuid::random().string();
    fs::create_directories(odd / "00000001.log");
    std::ofstream(odd / "00000002.log") << "not a segment";
    ASSERT_EQ(mkfifo((odd / "00000003.log").c_str(), 0600), 0);
    fs::create_symlink("/etc/passwd", odd / "00000004.log");
    fs::copy(ofOne / "00000001.log", odd / "00000005.log");  // of another machine
    fs::copy(ofOne / "00000001.log", ofOne / "00000001 (copy).log");
    Machine three(folder, home.path() / "three");
    EXPECT_EQ(three.fetch(), 2u);
    EXPECT_EQ(three.cloud->owner(), one.cloud->owner());

    // A machine's files are deleted: its records are unreadable, those of others stay.
    fs::remove_all(ofOne);
    EXPECT_EQ(codeOf([&] { two.cloud->fetchRecord({zone, "x"}); }), cloudErrorCode::networkFailure);
    EXPECT_EQ(two.fetch(), 1u) << "its own, which it has not fetched before";
    // That machine continues with a new identity.
    const auto before = ofOne.filename();
    one.save("z", "3");
    EXPECT_NE(one.cloud->ownFolder().filename(), before);
    EXPECT_EQ(two.fetch(), 1u);
    EXPECT_EQ(two.text("z"), "3");
}

TEST(FolderCloud, GoesOnWhateverOthersWriteIntoTheFolder) {
    using folderlog::Entry;
    const TestFolder home;
    const auto folder = home.path() / "shared";
    Machine one(folder, home.path() / "one");
    one.cloud->saveZone(zone);
    one.save("x", "1");
    const auto own = one.cloud->ownFolder();
    const auto other = Uuid::random();
    std::string log;
    folderlog::appendHead(log, other, 1);
    std::uint64_t number = 0;
    const auto add = [&](Entry::Kind kind, std::uint32_t generation, const std::string& name) {
        folderlog::appendEntry(log, {.kind = kind,
                                     .number = ++number,
                                     .clock = UINT64_MAX,
                                     .generation = generation,
                                     .zone = name,
                                     .name = "x",
                                     .type = "Item"});
    };
    add(Entry::Kind::zoneDeleted, UINT32_MAX, zone);
    add(Entry::Kind::record, UINT32_MAX, zone);
    for (int i = 0; i < 5000; ++i) add(Entry::Kind::zoneMade, 1, "zone " + std::to_string(i));
    fs::create_directories(folder / other.string());
    std::ofstream(folder / other.string() / "00000001.log") << log;
    fs::resize_file(folder / other.string() / "00000001.log", 3'000'000'000);
    // The next names of its own are taken.
    fs::create_directory(own / "00000002.log");
    fs::create_symlink("/nowhere", own / "00000003.log");
    one.restart();
    one.save("y", "2");
    EXPECT_TRUE(fs::is_regular_file(own / "00000004.log"));
    EXPECT_LT(one.cloud->zoneChanges("").modified.size(), 200u);
    EXPECT_EQ(Machine(folder, home.path() / "fresh").fetch(), 2u);
    one.cloud->deleteZone(zone);
    one.cloud->saveZone(zone);
    one.save("z", "3");
    EXPECT_EQ(Machine(folder, home.path() / "fresh").fetch(), 1u);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    EXPECT_LT(usage.ru_maxrss, 500'000) << "for a file with a hole";

    for (int i = 0; i < 1000; ++i) fs::create_directory(folder / newUuid());
    EXPECT_EQ(codeOf([&] { one.fetch(); }), cloudErrorCode::limitExceeded);
    shell("cd " + folder.string() + " && rmdir * 2>&1");

    // Nothing is written through a link.
    fs::rename(own, home.path() / "away");
    fs::create_directory_symlink(home.path() / "away", own);
    const auto before = shell("ls -lR " + (home.path() / "away").string());
    one.cloud->saveZone(zone);
    one.save("w", "4");
    EXPECT_EQ(shell("ls -lR " + (home.path() / "away").string()), before);
}

TEST(FolderCloud, TellsAMissingMountFromANewFolder) {
    const TestFolder home;
    const auto folder = home.path() / "mount";
    Machine machine(folder, home.path() / "machine");
    machine.cloud->saveZone(zone);
    machine.save("x", "1");
    const auto owner = machine.cloud->owner();
    fs::rename(folder, home.path() / "away");
    EXPECT_EQ(codeOf([&] { machine.fetch(); }), cloudErrorCode::networkUnavailable);
    fs::create_directory(folder);  // where nothing is mounted
    EXPECT_EQ(codeOf([&] { machine.save("y", "2"); }), cloudErrorCode::networkUnavailable);
    machine.restart();
    EXPECT_EQ(codeOf([&] { machine.cloud->owner(); }), cloudErrorCode::networkUnavailable);
    EXPECT_TRUE(fs::is_empty(folder));
    fs::remove(folder);
    fs::rename(home.path() / "away", folder);
    EXPECT_EQ(machine.cloud->owner(), owner);
    EXPECT_EQ(machine.fetch(), 1u);
    machine.save("y", "2");

    // Another folder at the same path is another account.
    Machine other(home.path() / "other", home.path() / "stranger");
    other.cloud->saveZone(zone);
    fs::rename(folder, home.path() / "away");
    fs::rename(other.folder, folder);
    EXPECT_NE(machine.cloud->owner(), owner);
    EXPECT_EQ(machine.cloud->owner(), Machine(folder, home.path() / "stranger").cloud->owner());
    // The same folder at another path is the same account.
    Machine moved(home.path() / "away", home.path() / "newcomer");
    EXPECT_EQ(moved.cloud->owner(), owner);
}

TEST(FolderCloud, SaysWhatIsWrongWithTheFolderAndLosesNothing) {
    const TestFolder home;
    inAProcessOfItsOwn([&] {
        Machine machine(home.path() / "shared", home.path() / "machine");
        machine.cloud->saveZone(zone);
        const auto tag = machine.save("x", "1");
        {
            const FullDisk full(2000);
            EXPECT_EQ(codeOf([&] { machine.save("big", std::string(10'000, 'b')); }),
                      cloudErrorCode::quotaExceeded);
        }
        EXPECT_EQ(machine.fetch(), 1u);
        EXPECT_EQ(machine.text("x"), "1");
        machine.save("x", "3", tag);
        machine.save("big", std::string(10'000, 'c'));

        obeyPermissions();
        const auto own = machine.cloud->ownFolder();
        machine.restart();  // the next save needs a new segment
        chmod(own.c_str(), 0500);
        EXPECT_EQ(codeOf([&] { machine.save("y", "1"); }), cloudErrorCode::permissionFailure);
        EXPECT_EQ(machine.fetch(), 2u) << "reading goes on";
        chmod(own.c_str(), 0700);
        machine.save("y", "1");
        EXPECT_EQ(Machine(home.path() / "shared", home.path() / "newcomer").fetch(), 3u);
    });
}

TEST(FolderCloud, IsAnotherMachineForEachProgramAndOnEachComputer) {
    const TestFolder home;
    const auto folder = home.path() / "shared";
    Machine one(folder, home.path() / "machine"), two(folder, home.path() / "machine");
    one.cloud->saveZone(zone);
    one.save("x", "1");
    two.save("y", "2");
    EXPECT_NE(one.cloud->ownFolder(), two.cloud->ownFolder());
    EXPECT_EQ(two.fetch(), 2u);
    const auto before = one.cloud->ownFolder();
    one.restart();
    EXPECT_EQ(one.cloud->ownFolder(), before);
    // The machine file, restored on another computer.
    one.cloud.reset();
    auto content = contentOf(home.path() / "machine");
    content.replace(content.find("computer "), 9, "computer 1");
    std::ofstream(home.path() / "machine") << content;
    one.restart();
    EXPECT_NE(one.cloud->ownFolder(), before);
    EXPECT_EQ(one.fetch(), 2u);

    // The machine file, restored on this computer or on a clone of it.
    const auto old = contentOf(home.path() / "machine");
    const auto earlier = one.cloud->ownFolder();
    one.restart();
    one.save("z", "3");
    one.cloud.reset();
    std::ofstream(home.path() / "machine") << old;
    one.restart();
    one.save("x", "4", one.cloud->fetchRecord({zone, "x"}).changeTag);
    EXPECT_NE(one.cloud->ownFolder(), earlier);
    EXPECT_EQ(Machine(folder, home.path() / "newcomer").fetch(), 3u);
}

}  // namespace
}  // namespace quorvi::test
