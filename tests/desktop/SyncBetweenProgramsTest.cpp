#include <gtest/gtest.h>

#include <fstream>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/cloud/PostgresServer.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/QuorviProgram.h"
#include "tests/support/desktop/TestUser.h"

// Two real programs, each with a home folder, a desktop and a session bus of its own, on one cloud.
namespace quorvi::test {
namespace {

constexpr auto sentence = "please call catherine about the weather";
constexpr auto recognised = "Please call catherine about the weather.";
constexpr int behindTheFirstLetter = 27;  // characters from the end of the sentence

// One of the user's machines.
class Machine : public QuorviProgram {
public:
    explicit Machine(const std::string& cloud)
        : QuorviProgram({{"cloudDatabase", PropertyList(cloud)}}) {}

    // On a desktop of its own, apart from the one of this test.
    void startElsewhere() {
        elsewhere_ = std::make_unique<NestedServer>();
        const auto run = home().path() / "run";
        std::filesystem::create_directories(run);
        std::filesystem::permissions(run, std::filesystem::perms::owner_all);
        launch({"dbus-run-session", "--", builtProgram("quorvi"), "--print-stages"},
               {"DISPLAY=" + elsewhere_->display(), "AT_SPI_BUS_ADDRESS",
                "XDG_RUNTIME_DIR=" + run.string()});
    }

private:
    std::unique_ptr<NestedServer> elsewhere_;
};

bool holds(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

class SyncBetweenProgramsTest : public testing::Test {
protected:
    // Dictates with a real voice into a real editor, and corrects the text there.
    void dictateAndMend(Machine& machine) {
        const auto sentences = folder_.write("sentences", std::string(sentence) + "\n");
        Process service({builtProgram("quorvi-speech-service"), "--port", "0", "--punctuate",
                         "--sentences", sentences});
        const auto line = service.readLine();
        Process editor(mousepad(folder_.write("note.txt", "")));
        const auto field = reader_.waitForFocus(editor.pid(), "AXTextArea");
        ASSERT_TRUE(field);
        machine.start(
            {"QUORVI_SERVICE=" + line.substr(line.rfind(' ') + 1), "QUORVI_API_KEY=offline"},
            {"--shortcut", "f8"});
        machine.until("| ready");
        const auto speech = (folder_.path() / "speech.wav").string();
        outputOf({"espeak-ng", "-v", "en-us+f2", "-s", "130", "-w", speech, sentence});
        user_.press(key::f8);
        machine.until("Listening");
        outputOf({"paplay", "-d", std::getenv("QUORVI_MIC_FEED"), speech});
        user_.release(key::f8);
        machine.until("Done");
        ASSERT_EQ(reader_.value(*field), recognised);
        user_.tap(key::left, behindTheFirstLetter);
        user_.tap(key::backspace);
        user_.chord({key::leftShift}, key::k);
        machine.until("Correction saved");
    }

    void exchange(const std::string& cloud) {
        Machine first(cloud), second(cloud);
        second.startElsewhere();
        dictateAndMend(first);
        if (HasFatalFailure()) return;
        // The dictation, the rule learned from the edit, and the shortcut.
        EXPECT_TRUE(eventually([&] { return holds(second.historyText(), recognised); }));
        EXPECT_TRUE(eventually([&] { return holds(second.preferencesText(), "Katherine"); }));
        EXPECT_TRUE(eventually([&] { return holds(second.preferencesText(), "hotkey"); }));

        // A deletion on one machine while it is off reaches the other, which has crashed in between
        // without losing anything.
        second.quit();
        std::ofstream(second.historyFile()) << "{\"records\":[],\"version\":1}";
        first.crash();
        first.start();
        first.until("|");
        EXPECT_TRUE(holds(first.historyText(), recognised));
        second.startElsewhere();
        EXPECT_TRUE(eventually([&] { return !holds(first.historyText(), recognised); }));
        EXPECT_TRUE(holds(first.preferencesText(), "Katherine"));
    }

    TestFolder folder_;
    AtspiAccessibility accessibility_{[] { return true; }};
    FieldReader reader_{accessibility_};
    TestUser user_;
};

TEST_F(SyncBetweenProgramsTest, ThroughASharedFolder) {
    const TestFolder shared;
    exchange("folder:" + (shared.path() / "cloud").string());
}

TEST_F(SyncBetweenProgramsTest, ThroughAServer) {
    const PostgresServer server;
    server.addAccount("ada", "a password");
    const auto passwords = folder_.write("passwords", "*:*:*:ada:a password\n");
    std::filesystem::permissions(passwords, std::filesystem::perms::owner_read);
    setenv("PGPASSFILE", passwords.c_str(), 1);
    exchange(server.address("ada"));
    unsetenv("PGPASSFILE");
}

}  // namespace
}  // namespace quorvi::test
