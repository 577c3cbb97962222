#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <utility>

#include "Quorvi/platform/linux/posix/FileLock.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/xdg/UserFolders.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestFolder.h"
#include "tests/support/Waiting.h"
#include "tests/support/contracts/PreferencesContract.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

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
    EXPECT_TRUE(eventually(
        [&] { return storedIn(file) == PropertyList::Dictionary{{"days", {std::int64_t{999}}}}; }));
}

TEST_F(PropertyListPreferencesTest, KeepForeignEntries) {
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

TEST_F(PropertyListPreferencesTest, FallBackOnThePreviousFileForTheSession) {
    const PropertyList::Dictionary good{{"mode", {std::string("toggle")}}};
    for (const bool hasPrevious : {true, false}) {
        storeInFile(good);
        if (hasPrevious) fs::copy(file, previous);
        std::ofstream(file) << "damaged";
        Opened opened(file);
        auto& preferences = opened.preferences;
        EXPECT_FALSE(preferences.couldBeRead());
        EXPECT_EQ(preferences.string("mode").value_or("none"), hasPrevious ? "toggle" : "none");
        preferences.setString("mode", "hold");
        preferences.flush();
        EXPECT_EQ(preferences.string("mode"), "hold");
        EXPECT_TRUE(preferences.persistenceError());
        EXPECT_EQ(storedIn(previous), hasPrevious ? good : PropertyList::Dictionary());
        fs::remove(previous);
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
    EXPECT_TRUE(opened.preferences.persistenceError());
    EXPECT_EQ(told, 2) << "once for the value, once for the error";
    opened.preferences.setString("mode", "hold");
    opened.preferences.flush();
    EXPECT_EQ(contentOf(file), "damaged");
    EXPECT_EQ(opened.preferences.string("mode"), "hold");
}

// DurabilityContract has the full disk.
TEST_F(PropertyListPreferencesTest, ReportAFailedWriteAndTryAgain) {
    Opened opened(file);
    auto& preferences = opened.preferences;
    std::unique_ptr<FileLock> lock;
    const std::pair<std::function<void()>, std::function<void()>> troubles[]{
        {[&] { std::ofstream(folder) << "in the way"; }, [&] { fs::remove(folder); }},
        {[&] { lock = std::make_unique<FileLock>(file.string() + ".lock", 1s); },
         [&] { lock.reset(); }},
    };
    for (const auto& [begin, end] : troubles) {
        begin();
        // The write on the executor fails by itself, and the failure is published.
        preferences.setString("mode", "toggle");
        EXPECT_TRUE(until(opened.loop, [&] { return preferences.persistenceError().has_value(); }));
        preferences.flush();
        EXPECT_TRUE(preferences.persistenceError());
        EXPECT_EQ(preferences.string("mode"), "toggle");
        end();
        preferences.setString("mode", "hold");
        preferences.flush();
        EXPECT_EQ(preferences.persistenceError(), std::nullopt);
        EXPECT_EQ(Opened(file).preferences.string("mode"), "hold");
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

    preferences.setInteger("own", 3);
    preferences.flush();
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

TEST_F(PropertyListPreferencesTest, KeepTheirOwnNewerValueOverAnOlderForeignOne) {
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
}

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(InAFile, PreferencesContract, FileRig);

}  // namespace quorvi::test
