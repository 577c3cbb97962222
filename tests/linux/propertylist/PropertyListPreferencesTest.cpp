#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <random>
#include <utility>

#include "Quorvi/platform/linux/posix/FileLock.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/xdg/UserFolders.h"
#include "tests/support/FullDisk.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestFolder.h"
#include "tests/support/Waiting.h"
#include "tests/support/contracts/PreferencesContract.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

constexpr auto notOpened =
    "Preferences could not be opened. They have been left untouched; changes last for this session "
    "only.";
constexpr auto notSaved =
    "Preferences could not be saved on this computer. Check available disk space and folder "
    "access.";

// One process's preferences in a file.
struct Opened {
    explicit Opened(const fs::path& file) : preferences(files, file, disk, loop) {}
    PosixFileStore files;
    LoopScheduler loop;
    SerialExecutor disk{"disk"};
    PropertyListPreferences preferences;
};

class FileRig {
public:
    Preferences& preferences() { return opened_->preferences; }
    void reopen() {
        opened_->preferences.flush();
        opened_ = std::make_unique<Opened>(file_);
    }

private:
    const TestFolder folder_;
    const fs::path file_ = folder_.path() / "Quorvi" / "preferences.plist";
    std::unique_ptr<Opened> opened_ = std::make_unique<Opened>(file_);
};

class PropertyListPreferencesTest : public testing::Test {
protected:
    void storeInFile(const PropertyList::Dictionary& entries) const {
        fs::create_directories(folder);
        std::ofstream(file, std::ios::binary) << PropertyList{entries}.toBinary();
    }
    static PropertyList::Dictionary storedIn(const fs::path& path) {
        const auto list = PropertyList::fromBinary(contentOf(path));
        return list ? std::get<PropertyList::Dictionary>(list->value) : PropertyList::Dictionary{};
    }

    const TestFolder parent;
    const fs::path folder = parent.path() / "Quorvi";
    const fs::path file = folder / "preferences.plist";
    const fs::path previous = folder / "preferences.plist.previous";
};

TEST_F(PropertyListPreferencesTest, AreWrittenSoonWithoutBeingAsked) {
    Opened opened(file);
    opened.preferences.setInteger("days", 30);
    EXPECT_TRUE(eventually([&] { return storedIn(file).contains("days"); }));
    for (int i = 0; i < 1000; ++i) opened.preferences.setInteger("days", i);
    EXPECT_TRUE(eventually([&] {
        return storedIn(file) == PropertyList::Dictionary{{"days", {std::int64_t{999}}}};
    }));
}

TEST_F(PropertyListPreferencesTest, LetWhatTheyDoNotKnowPassThrough) {
    PropertyList::Dictionary stored{
        {"date", {Date{-0.123456789}}},
        {"real", {1e300}},
        {"list", {PropertyList::Array{{std::string("a\0b", 3)}, {PropertyList::Uid{9}}}}},
        {"dictionary", {PropertyList::Dictionary{{"", {Bytes{}}}}}},
        {"mode", {PropertyList::Array{}}},
    };
    storeInFile(stored);
    Opened opened(file);
    for (const auto* key : {"date", "real", "list", "dictionary", "mode"}) {
        EXPECT_TRUE(opened.preferences.contains(key));
        EXPECT_EQ(opened.preferences.string(key), std::nullopt);
        EXPECT_EQ(opened.preferences.integer(key), std::nullopt);
    }
    opened.preferences.setString("mode", "hold");
    opened.preferences.setBoolean("new", true);
    opened.preferences.flush();
    stored.insert_or_assign("mode", PropertyList{std::string("hold")});
    stored.insert_or_assign("new", PropertyList{true});
    EXPECT_TRUE(storedIn(file) == stored);
}

TEST_F(PropertyListPreferencesTest, LeaveAloneWhatTheyCannotReadAndFallBackOnThePrevious) {
    const auto good = PropertyList{PropertyList::Dictionary{{"mode", {std::string("toggle")}}}};
    const auto whole = good.toBinary();
    const std::pair<const char*, std::string> contents[]{
        {"empty", ""},
        {"half", whole.substr(0, whole.size() / 2)},
        {"not a dictionary", PropertyList{PropertyList::Array{}}.toBinary()},
        {"foreign", "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict/></plist>"},
        {"noise", std::string(5000, '\xA5')},
        {"a named pipe", ""},
    };
    for (const bool hasPrevious : {true, false}) {
        for (const auto& [what, content] : contents) {
            SCOPED_TRACE(what);
            fs::remove_all(folder);
            fs::create_directories(folder);
            const bool isPipe = std::string_view(what) == "a named pipe";
            if (!isPipe) std::ofstream(file, std::ios::binary) << content;
            EXPECT_EQ(isPipe ? ::mkfifo(file.c_str(), 0600) : 0, 0);
            if (hasPrevious) std::ofstream(previous, std::ios::binary) << whole;

            Opened opened(file);
            auto& preferences = opened.preferences;
            EXPECT_FALSE(preferences.couldBeRead());
            EXPECT_EQ(preferences.persistenceError(), notOpened);
            EXPECT_EQ(preferences.string("mode").value_or("none"), hasPrevious ? "toggle" : "none");
            preferences.setString("mode", "hold");
            preferences.flush();
            EXPECT_EQ(preferences.string("mode"), "hold");
            EXPECT_EQ(preferences.persistenceError(), notOpened);
            EXPECT_EQ(isPipe ? content : contentOf(file), content);
            EXPECT_EQ(contentOf(previous), hasPrevious ? whole : "");
        }
    }
}

TEST_F(PropertyListPreferencesTest, LeaveAloneAFileThatIsDamagedWhileTheyRun) {
    Opened opened(file);
    opened.preferences.setString("mode", "toggle");
    opened.preferences.flush();
    std::ofstream(file, std::ios::binary) << "damaged";
    int told = 0;
    const auto subscription = opened.preferences.onChange([&] { ++told; });
    opened.preferences.setString("model", "gpt-transcribe");
    opened.preferences.flush();
    EXPECT_EQ(opened.preferences.persistenceError(), notOpened);
    EXPECT_EQ(told, 2) << "once for the value, once for the error";
    opened.preferences.setString("mode", "hold");
    opened.preferences.flush();
    EXPECT_EQ(contentOf(file), "damaged");
    EXPECT_EQ(opened.preferences.string("mode"), "hold");
}

// Whatever keeps them from being saved, they are there and saved once it has gone.
TEST_F(PropertyListPreferencesTest, SayThatTheyAreNotSavedAndTryAgain) {
    Opened opened(file);
    auto& preferences = opened.preferences;
    const std::string large(100'000, 'x');
    const auto away = parent.path() / "away";
    std::unique_ptr<FullDisk> full;
    std::unique_ptr<FileLock> lock;
    struct Trouble {
        const char* what;
        std::function<void()> begin;
        std::function<void()> end;
    };
    const Trouble troubles[]{
        {"full disk", [&] { full = std::make_unique<FullDisk>(); }, [&] { full.reset(); }},
        {"folder that is a file",
         [&] {
             fs::rename(folder, away);
             std::ofstream(folder) << "in the way";
         },
         [&] {
             fs::remove(folder);
             fs::rename(away, folder);
         }},
        {"frozen process with the lock",
         [&] {
             lock = std::make_unique<FileLock>(file.string() + ".lock", std::chrono::seconds(1));
         },
         [&] { lock.reset(); }},
        {"folder that is a file and then gone",
         [&] {
             fs::remove_all(folder);
             std::ofstream(folder) << "in the way";
         },
         [&] { fs::remove(folder); }},
    };
    preferences.setBoolean("before", true);
    preferences.flush();
    for (const auto& [what, begin, end] : troubles) {
        SCOPED_TRACE(what);
        begin();
        preferences.setString(what, large);
        preferences.remove("before");
        // The write on the executor fails by itself, and the failure is published.
        std::string published;
        const auto subscription =
            preferences.onChange([&] { published = preferences.persistenceError().value_or(""); });
        EXPECT_TRUE(until(opened.loop, [&] { return published == notSaved; }));
        preferences.flush();
        EXPECT_EQ(preferences.persistenceError(), notSaved);
        EXPECT_EQ(preferences.string(what), large);
        end();
        preferences.setBoolean("before", true);
        preferences.flush();
        EXPECT_EQ(preferences.persistenceError(), std::nullopt);
        const Opened next(file);
        EXPECT_EQ(next.preferences.string(what), large);
        EXPECT_EQ(next.preferences.string("full disk"), large);
        EXPECT_EQ(next.preferences.boolean("before"), true);
    }
}

TEST_F(PropertyListPreferencesTest, OfTwoProcessesAtOnceLoseNoKey) {
    storeInFile({{"removed", {true}}, {"foreign", {std::int64_t{1}}}, {"own", {std::int64_t{1}}}});
    constexpr int keys = 60;
    const auto writer = [this](const std::string& name) {
        return [this, name](const ForkedProcess::Report& report) {
            Opened opened(file);
            report(1);
            for (int i = 0; i < keys; ++i) {
                opened.preferences.setInteger(name + std::to_string(i), i);
                opened.preferences.setString("last", name);
                if (i % 4 == 0) opened.preferences.flush();
            }
            opened.preferences.remove("removed");
            opened.preferences.setInteger("foreign", 2);
            opened.preferences.setInteger("own", 2);
            opened.preferences.flush();
            if (opened.preferences.persistenceError()) ::_exit(1);
        };
    };
    ForkedProcess left(writer("left"));
    ForkedProcess right(writer("right"));
    Opened opened(file);
    auto& preferences = opened.preferences;
    EXPECT_EQ(left.wait(), 0);
    EXPECT_EQ(right.wait(), 0);

    int told = 0;
    const auto subscription = preferences.onChange([&] { ++told; });
    preferences.setInteger("own", 3);
    preferences.flush();
    EXPECT_EQ(told, 2) << "once for the own value, once for all foreign ones";
    const Opened next(file);
    for (const auto* seen : {&std::as_const(preferences), &next.preferences}) {
        for (int i = 0; i < keys; ++i) {
            EXPECT_EQ(seen->integer("left" + std::to_string(i)), i);
            EXPECT_EQ(seen->integer("right" + std::to_string(i)), i);
        }
        EXPECT_FALSE(seen->contains("removed"));
        EXPECT_EQ(seen->integer("foreign"), 2);
        EXPECT_EQ(seen->integer("own"), 3);
    }
}

TEST_F(PropertyListPreferencesTest, KeepTheirOwnNewerValueOverAnothersThatIsHeardOfLate) {
    storeInFile({{"mode", {std::string("hold")}}});
    Opened opened(file);
    Opened other(file);
    other.preferences.setString("mode", "other");
    other.preferences.flush();
    opened.preferences.setInteger("first write", 1);  // meets the other's value
    ASSERT_TRUE(eventually([&] { return storedIn(file).contains("first write"); }));
    opened.preferences.setString("mode", "own");
    ASSERT_TRUE(
        eventually([&] { return storedIn(file).at("mode") == PropertyList{std::string("own")}; }));
    opened.preferences.flush();
    EXPECT_EQ(opened.preferences.string("mode"), "own");
}

TEST(UserFolders, ComeFromTheEnvironmentAndIgnoreARelativePath) {
    ::setenv("HOME", "/home/somebody", 1);
    ::setenv("XDG_DATA_HOME", "/elsewhere/data", 1);
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    const auto folders = UserFolders::find();
    EXPECT_EQ(folders.data, "/elsewhere/data/Quorvi");
    EXPECT_EQ(folders.config, "/home/somebody/.config/Quorvi");
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(UserFolders::find().data, "/home/somebody/.local/share/Quorvi");
    ::unsetenv("HOME");
    EXPECT_TRUE(UserFolders::find().data.is_absolute());
}

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(InAFile, PreferencesContract, FileRig);

}  // namespace quorvi::test
