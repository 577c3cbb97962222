// The whole program on GNOME Shell, set up in its window by a new user: the shortcut is one of
// GNOME's custom shortcuts or, from GNOME 48 on, granted by the portal; the text goes through IBus.
#include "Quorvi/platform/linux/portal/PortalBackends.h"
#include "tests/support/desktop/EditorUser.h"
#include "tests/support/desktop/QuorviProgram.h"
#include "tests/support/desktop/ScreenReader.h"
#include "tests/support/desktop/Speaker.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;
using R = ScreenReader;

constexpr auto listing = "Add the shortcut to the desktop's settings";
constexpr auto copied = "what the user had copied";

class OnGnome : public testing::Test, protected EditorUser {
protected:
    // GNOME's settings are in the session's folder.
    static std::string folderOf(const char* variable) {
        return std::string(variable) + '=' + std::getenv(variable);
    }
    static std::string settings(const std::string& command) {
        return shell(folderOf("XDG_CONFIG_HOME") + ' ' + command);
    }

    void setUpInTheWindow() {
        // The portal knows programs by their desktop entries.
        const auto entries = std::filesystem::path(std::getenv("XDG_DATA_HOME")) / "applications";
        std::filesystem::create_directories(entries);
        std::ofstream(entries / "app.quorvi.Quorvi.desktop")
            << "[Desktop Entry]\nType=Application\nName=Quorvi\nExec=" << builtProgram("quorvi")
            << '\n';
        program.start({folderOf("XDG_CONFIG_HOME")});
        window.emplace(program.pid());
        press(R::pushButton, "Use the offline recogniser");
        press(R::pushButton, "Change shortcut");
        EXPECT_TRUE(window->sees(R::pushButton, "Keep the shortcut"));
        EXPECT_TRUE(user.waitForWindowOf(program.pid()));
        user.tap(key::f9);
        EXPECT_TRUE(window->sees(R::label, "Shortcut: F9")) << window->everything();
        if (hasPortal) {
            grant();
        } else {
            press(R::radioButton, "Settings");
            press(R::checkBox, listing);
        }
        program.until("| ready");
    }
    ~OnGnome() override {
        program.quit();
        settings(builtProgram("quorvi") + " erase --yes");
        EXPECT_EQ(settings("dconf dump /org/gnome/settings-daemon/"), "");
    }

    void press(R::Role role, const std::string& name) {
        EXPECT_TRUE(window->press(role, name)) << name << " is not in:\n" << window->everything();
    }
    // Answers the desktop's question as the user does.
    static void grant() {
        EXPECT_TRUE(eventually([] {
            const auto dialog = shell("pgrep -u $(id -u) -f [g]lobal-shortcuts-provider");
            return !dialog.empty() && R(std::stoi(dialog)).press(R::pushButton, "Add");
        }));
    }
    void beginDictation() {
        user.press(key::f9);
        program.until("Listening");
    }
    void dictateInto(const Command& command) {
        const auto field = open(command);
        ASSERT_TRUE(field);
        copyFile(folder.write("copied", copied));
        beginDictation();
        speaker.speak().wait();
        std::this_thread::sleep_for(200ms);
        user.release(key::f9);
        const auto end = program.untilOneOf({"Done", "Needs attention", "Ready to paste"});
        EXPECT_NE(end.find("Text sent to"), end.npos) << end;
        EXPECT_TRUE(reader.waitForValue(*field, writtenSentence)) << fieldText();
        EXPECT_EQ(clipboard(), copied);
        EXPECT_EQ(fieldText(), writtenSentence);
    }

    const bool hasPortal = desktopHasPortal("org.freedesktop.impl.portal.GlobalShortcuts");
    Speaker speaker;
    QuorviProgram program;
    std::optional<ScreenReader> window;
};

TEST_F(OnGnome, TheShortcutIsHeldIntoTwoEditorsAndAPasswordIsRefused) {
    setUpInTheWindow();
    dictateInto(mousepad(folder.write("note.txt", "")));
    dictateInto(gnomeTextEditor(folder.write("other.txt", "")));
    editor = Process({"yad", "--entry", "--hide-text"});
    ASSERT_TRUE(reader.waitForPassword(editor.pid()));
    user.press(key::f9);
    const auto end = program.untilOneOf({"Listening", "Needs attention"});
    EXPECT_NE(end.find("regular"), end.npos) << end;
    user.release(key::f9);
}

TEST_F(OnGnome, ATapBeginsADictationThatTheNextEndsAndEscapeCancels) {
    if (hasPortal) GTEST_SKIP() << "tells every release, and not Escape";
    setUpInTheWindow();
    ASSERT_TRUE(openMousepad());
    beginDictation();
    std::this_thread::sleep_for(1s);  // until it repeats
    user.tap(key::escape);
    program.until("Ready when you are");
    user.release(key::f9);
    std::this_thread::sleep_for(1s);  // until the release has been told
    user.tap(key::f9);
    program.until("Listening");
    speaker.speak().wait();
    user.tap(key::f9);
    program.until("Done");
    EXPECT_TRUE(reader.waitForValue(*openField, writtenSentence)) << fieldText();
    // Escape is the editor's again...
    press(R::checkBox, listing);
    EXPECT_TRUE(
        eventually([] { return settings("dconf dump /org/gnome/settings-daemon/").empty(); }));
}

}  // namespace
}  // namespace quorvi::test
