#include <algorithm>
#include <ctime>
#include <fstream>

#include "QuorviCore/identity/Uuid.h"
#include "tests/support/cloud/PostgresServer.h"
#include "tests/support/desktop/EditorUser.h"
#include "tests/support/desktop/QuorviProgram.h"
#include "tests/support/desktop/ScreenReader.h"
#include "tests/support/desktop/Speaker.h"

namespace quorvi::test {
namespace {

bool holds(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

// Two real programs, each with a home folder, a desktop and a session bus of its own, on one cloud.
class SyncBetweenProgramsTest : public testing::Test, protected EditorUser {
protected:
    // Dictates with a real voice into a real editor, and corrects the text there.
    void dictateAndMend() {
        const Speaker speaker;
        ASSERT_TRUE(openMousepad());
        first_.start({"QUORVI_SERVICE=" + speaker.service, "QUORVI_API_KEY=offline"},
                     {"--shortcut", "f8"});
        first_.until("| ready");
        user.press(key::f8);
        first_.until("Listening");
        speaker.speak().wait();
        user.release(key::f8);
        first_.until("Done");
        ASSERT_EQ(fieldText(), writtenSentence);
        mendSentence();
        first_.until("Correction saved");
    }

    // While they don't run.
    void choose(const std::string& cloud) {
        for (const auto* each : {&first_, &second_}) {
            Process choosing({builtProgram("quorvi"), "--cloud-database=" + cloud},
                             {each->homeSetting()});
            ASSERT_EQ(choosing.wait(), 0);
        }
    }
    static void setHistory(const QuorviProgram& machine, const std::string& records) {
        std::filesystem::create_directories(machine.dataFolder());
        std::ofstream(machine.historyFile()) << R"({"records":[)" + records + R"(],"version":1})";
    }
    static std::string record(const std::string& text) {
        const auto today = std::to_string(std::time(nullptr) - 978'307'200);  // seconds since 2001
        return R"({"appName":"Mail","audioSeconds":3,"date":)" + today + R"(,"id":")" + newUuid() +
               R"(","language":"el","text":")" + text + R"(","wordCount":1})";
    }
    std::string addAccount(const PostgresServer& server) {
        server.addAccount("ada", "a password");
        const auto passwords = folder.write("passwords", "*:*:*:ada:a password\n");
        std::filesystem::permissions(passwords, std::filesystem::perms::owner_read);
        setenv("PGPASSFILE", passwords.c_str(), 1);
        return server.address("ada");
    }

    void exchange(const std::string& cloud) {
        choose(cloud);
        second_.startElsewhere();
        dictateAndMend();
        if (HasFatalFailure()) return;
        // The dictation, the rule learned from the edit, and the shortcut.
        EXPECT_TRUE(eventually([&] { return holds(second_.historyText(), writtenSentence); }));
        EXPECT_TRUE(eventually([&] { return holds(second_.preferencesText(), "nise"); }));
        EXPECT_TRUE(eventually([&] { return holds(second_.preferencesText(), "hotkey"); }));

        // A deletion on one machine while it is off reaches the other, which has crashed in between
        // without losing anything.
        second_.quit();
        setHistory(second_, "");
        first_.crash();
        first_.start();
        first_.until("|");
        EXPECT_TRUE(holds(first_.historyText(), writtenSentence));
        second_.startElsewhere();
        EXPECT_TRUE(eventually([&] { return !holds(first_.historyText(), writtenSentence); }));
        EXPECT_TRUE(holds(first_.preferencesText(), "nise"));
        first_.quit();
        second_.quit();
    }

    QuorviProgram first_, second_;
};

TEST_F(SyncBetweenProgramsTest, ThroughASharedFolder) {
    const auto cloud = (folder.path() / "cloud").string();
    exchange("folder:" + cloud);
    EXPECT_EQ(shell("grep -rl '" + std::string(writtenSentence) + "' " + cloud), "") << "deleted";
}

TEST_F(SyncBetweenProgramsTest, ThroughAServer) {
    const PostgresServer server;
    exchange(addAccount(server));
    unsetenv("PGPASSFILE");
}

TEST_F(SyncBetweenProgramsTest, EachCloudIsANewBeginningWithTheSameData) {
    const PostgresServer server;
    setHistory(first_, record("erstens"));
    setHistory(second_, record("zweitens"));
    for (const auto& cloud : {std::string(), "folder:" + (folder.path() / "cloud").string(),
                              addAccount(server), std::string()}) {
        choose(cloud);
        first_.start();
        second_.startElsewhere();
        for (const auto* machine : {&first_, &second_}) {
            const auto isThere = [&] {
                const auto text = machine->historyText();
                const auto known = contentOf(machine->dataFolder() / "account-sync.json");
                return holds(known, "\"cloud\":\"" + cloud + "\"") && holds(known, "lastSynced") &&
                       (cloud.empty() || (holds(text, "erstens") && holds(text, "zweitens")));
            };
            EXPECT_TRUE(eventually(isThere)) << cloud;
            EXPECT_EQ(std::filesystem::exists(machine->dataFolder() / "cloud"), cloud.empty());
        }
        first_.quit();
        second_.quit();
    }
    EXPECT_EQ(std::ranges::count(first_.historyText(), '{'), 3) << "the document and two records";
    unsetenv("PGPASSFILE");
}

TEST_F(SyncBetweenProgramsTest, AnotherCloudIsChosenInTheWindow) {
    using R = ScreenReader;
    const PostgresServer server;
    const auto address = addAccount(server);
    const auto cloud = folder.path() / "cloud";
    setHistory(first_, record("erstens"));
    setHistory(second_, record("zweitens"));
    choose("folder:" + cloud.string());
    Process({builtProgram("quorvi"), "--cloud-database="}, {first_.homeSetting()}).wait();
    second_.startElsewhere();
    first_.start();
    ScreenReader window(first_.pid());
    // A list of choices goes by the name of the chosen one.
    const auto choosePlace = [&](const std::string& present, std::uint8_t direction) {
        ASSERT_TRUE(window.focus(R::comboBox, present)) << window.everything();
        ASSERT_TRUE(user.bringToFront(first_.pid()));
        user.tap(direction);
    };
    const auto check = [&] {
        ASSERT_TRUE(window.press(R::pushButton, "Check where the data are shared"));
        EXPECT_TRUE(window.sees(R::label, "It works: data can be written and read back."))
            << window.everything();
    };
    const auto belongsTo = [&](const std::string& place) {
        return eventually([&] {
            return holds(contentOf(first_.dataFolder() / "account-sync.json"),
                         R"("cloud":")" + place + '"');
        });
    };
    ASSERT_TRUE(window.press(R::radioButton, "Settings")) << window.everything();
    choosePlace("Only this computer", key::down);
    ASSERT_TRUE(window.write(R::text, "Folder", cloud.string())) << window.everything();
    ASSERT_TRUE(window.press(R::pushButton, "Use this folder"));
    EXPECT_TRUE(eventually([&] {
        return holds(first_.historyText(), "zweitens") && holds(second_.historyText(), "erstens");
    }));
    EXPECT_FALSE(std::filesystem::exists(first_.dataFolder() / "cloud"));
    check();
    EXPECT_EQ(std::ranges::distance(std::filesystem::directory_iterator(cloud)), 2)
        << "each computer once";

    choosePlace("A shared folder", key::down);
    ASSERT_TRUE(window.write(R::text, "Server", address)) << window.everything();
    ASSERT_TRUE(window.press(R::pushButton, "Use this server"));
    EXPECT_TRUE(belongsTo(address));
    check();

    choosePlace("A PostgreSQL server", key::up);
    choosePlace("A shared folder", key::up);
    ASSERT_TRUE(window.press(R::pushButton, "Keep the data on this computer only"));
    EXPECT_TRUE(belongsTo(""));
    EXPECT_TRUE(std::filesystem::exists(first_.dataFolder() / "cloud"));
    EXPECT_EQ(server.sql("SELECT count(*) >= 2 FROM quorvi.records"), "t\n");
    unsetenv("PGPASSFILE");
    first_.quit();
    second_.quit();
    for (const auto* each : {&first_, &second_})
        EXPECT_EQ(std::ranges::count(each->historyText(), '{'), 3)
            << "the document and two records";
}

}  // namespace
}  // namespace quorvi::test
