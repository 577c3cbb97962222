#include <fstream>

#include "tests/support/cloud/PostgresServer.h"
#include "tests/support/desktop/EditorUser.h"
#include "tests/support/desktop/QuorviProgram.h"
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

    void exchange(const std::string& cloud) {
        for (const auto* each : {&first_, &second_}) {
            Process choosing({builtProgram("quorvi"), "--cloud-database=" + cloud},
                             {each->homeSetting()});
            ASSERT_EQ(choosing.wait(), 0);
        }
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
        std::ofstream(second_.historyFile()) << "{\"records\":[],\"version\":1}";
        first_.crash();
        first_.start();
        first_.until("|");
        EXPECT_TRUE(holds(first_.historyText(), writtenSentence));
        second_.startElsewhere();
        EXPECT_TRUE(eventually([&] { return !holds(first_.historyText(), writtenSentence); }));
        EXPECT_TRUE(holds(first_.preferencesText(), "nise"));
    }

    QuorviProgram first_, second_;
};

TEST_F(SyncBetweenProgramsTest, ThroughASharedFolder) {
    exchange("folder:" + (folder.path() / "cloud").string());
}

TEST_F(SyncBetweenProgramsTest, ThroughAServer) {
    const PostgresServer server;
    server.addAccount("ada", "a password");
    const auto passwords = folder.write("passwords", "*:*:*:ada:a password\n");
    std::filesystem::permissions(passwords, std::filesystem::perms::owner_read);
    setenv("PGPASSFILE", passwords.c_str(), 1);
    exchange(server.address("ada"));
    unsetenv("PGPASSFILE");
}

}  // namespace
}  // namespace quorvi::test
