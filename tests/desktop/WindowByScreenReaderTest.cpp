#include <ctime>

#include "tests/support/Paths.h"
#include "tests/support/desktop/EditorUser.h"
#include "tests/support/desktop/Keyring.h"
#include "tests/support/desktop/ScreenReader.h"
#include "tests/support/desktop/Speaker.h"
#include "tests/support/sound/SoundServer.h"

namespace quorvi::test {
namespace {

using R = ScreenReader;

// A folder of data with two dictations of today.
class SavedHistory {
public:
    SavedHistory() {
        const auto now = std::to_string(std::time(nullptr) - 978'307'200);
        std::string records;
        for (const auto* text : {"We met Kunigunde.", "The other one of today."})
            records +=
                std::string(records.empty() ? "" : ",") + R"({"id":"00000000-0000-4000-8000-)" +
                std::to_string(100'000'000'000 + records.size()) + R"(","date":)" + now +
                R"(,"text":")" + text + R"(","wordCount":3,"audioSeconds":2,"appName":"Mail",)" +
                R"("language":"automatic"})";
        std::filesystem::create_directories(folder_.path() / "Quorvi");
        folder_.write("Quorvi/history.json", R"({"records":[)" + records + R"(],"version":1})");
    }
    std::string setting() const { return "XDG_DATA_HOME=" + folder_.path().string(); }

private:
    const TestFolder folder_;
};

// The program itself, used through the accessibility bus alone, as somebody does who can't see it.
class WindowByScreenReader : public testing::Test, protected EditorUser {
protected:
    void press(R::Role role, const std::string& name) {
        ASSERT_TRUE(reader_.press(role, name)) << name << " is not in:\n" << reader_.everything();
    }
    void write(R::Role role, const std::string& name, const std::string& text) {
        ASSERT_TRUE(reader_.write(role, name, text)) << name << " is not in:\n"
                                                     << reader_.everything();
    }
    void expect(R::Role role, const std::string& name) {
        EXPECT_TRUE(reader_.sees(role, name)) << name << " is not in:\n" << reader_.everything();
    }
    void expectGone(R::Role role, const std::string& name) {
        EXPECT_TRUE(reader_.missesSoon(role, name)) << name << " is in:\n" << reader_.everything();
    }

    const SavedHistory saved_;
    // The key is refused, so one that is typed stays in memory.
    Process quorvi_{{builtProgram("quorvi")}, {"QUORVI_API_KEY=not a key", saved_.setting()}};
    ScreenReader reader_{quorvi_.pid()};
};

// On a new machine: no key, no microphone, no tray, accessibility switched off.
TEST(FirstRun, EachRowIsReadyAsSoonAsTheUserHasSeenToIt) {
    const Process keyring(Keyring::daemon(Keyring::Begin::unlocked));
    const SoundServer sound(SoundServer::Microphone::absent);
    const auto setAccessibility = [](const char* on) {
        shell(std::string("gdbus call --session -d org.a11y.Bus -o /org/a11y/bus -m "
                          "org.freedesktop.DBus.Properties.Set org.a11y.Status IsEnabled '<") +
              on + ">'");
    };
    setAccessibility("false");
    Process quorvi({builtProgram("quorvi")}, {"PULSE_SERVER=" + sound.address()});
    ScreenReader reader(quorvi.pid());
    const struct {
        const char* row;
        std::function<void()> fix;
    } rows[] = {
        {"Enable: Accessibility", [&] { setAccessibility("true"); }},
        {"Enable: Microphone",
         [&] {
             sound.pactl("load-module module-null-sink sink_name=mic_feed");
             sound.pactl("load-module module-remap-source master=mic_feed.monitor source_name=mic");
         }},
        {"Add key: OpenAI API key",
         [] { shell("printf 'sk-stored\n' | " + builtProgram("quorvi") + " --store-key"); }},
    };
    for (const auto& each : rows)
        EXPECT_TRUE(reader.sees(R::pushButton, each.row)) << each.row << '\n'
                                                          << reader.everything();
    for (const auto& each : rows) {
        each.fix();
        EXPECT_TRUE(reader.missesSoon(R::pushButton, each.row)) << reader.everything();
    }
    EXPECT_TRUE(reader.sees(R::heading, "Ready when you are"));
    shell(builtProgram("quorvi") + " --remove-key");
    EXPECT_TRUE(reader.sees(R::pushButton, "Add key: OpenAI API key")) << reader.everything();
    EXPECT_TRUE(reader.sees(R::label,
                            "This desktop shows no tray icons. Quorvi keeps running when you close "
                            "this window; start it again to come back here."));
    EXPECT_TRUE(reader.press(R::pushButton, "Quit Quorvi"));
    EXPECT_EQ(quorvi.wait(), 0);
}

// Somebody without an account or a terminal dictates into the window's own field.
TEST(FirstRun, TheOfflineRecogniserNeedsNoAccountAndNoTerminal) {
    const Process quorvi({builtProgram("quorvi")});
    ScreenReader reader(quorvi.pid());
    TestUser user;
    ASSERT_TRUE(reader.press(R::pushButton, "Use the offline recogniser")) << reader.everything();
    ASSERT_TRUE(reader.sees(R::heading, "Ready when you are")) << reader.everything();
    ASSERT_TRUE(user.bringToFront(quorvi.pid()));
    ASSERT_TRUE(reader.focus(R::text, "Dictation test field")) << reader.everything();
    user.press(key::rightAlt);
    EXPECT_TRUE(reader.sees(R::heading, "Listening…")) << reader.everything();
    Speaker().speak().wait();
    user.release(key::rightAlt);
    const auto written = [&] { return reader.content(R::text, "Dictation test field"); };
    EXPECT_TRUE(eventually([&] { return written() == writtenSentence; })) << written();
}

// From the first start to the first text in another program.
TEST_F(WindowByScreenReader, ANewUserSetsUpAKeyAndTestsPasting) {
    expect(R::heading, "Complete setup to start");
    press(R::pushButton, "Add key: OpenAI API key");
    write(R::passwordText, "OpenAI API key", "sk-typed");
    press(R::pushButton, "Save");
    expect(R::label, "Saved");
    press(R::radioButton, "Dictation");
    expect(R::heading, "Ready when you are");

    ASSERT_TRUE(openMousepad());
    press(R::pushButton, "Test paste");
    expect(R::pushButton, "Cancel test");
    EXPECT_TRUE(eventually([&] { return fieldText() == "Hello, world. Καλημέρα, κόσμε."; }))
        << fieldText();
    press(R::radioButton, "Settings");
    press(R::pushButton, "Remove key");
    expectGone(R::label, "Saved");
}

TEST_F(WindowByScreenReader, AShortcutIsChosenByPressingIt) {
    // The last key is the global shortcut by then, which the window gets all the same.
    for (const auto& [keycode, name] :
         {std::pair(key::escape, "Right Alt"), {key::f6, "F6"}, {key::f6, "F6"}}) {
        press(R::pushButton, "Change shortcut");
        expect(R::pushButton, "Keep the shortcut");
        ASSERT_TRUE(user.bringToFront(quorvi_.pid()));
        user.tap(keycode);
        expectGone(R::pushButton, "Keep the shortcut");
        expect(R::label, std::string("Shortcut: ") + name);
    }
}

TEST_F(WindowByScreenReader, DictationsAreFoundRememberedFromAndDeletedAndEverythingHasAName) {
    press(R::radioButton, "History");
    expect(R::label, "2 saved dictations");
    EXPECT_EQ(reader_.unnamed(), "") << reader_.everything();
    write(R::text, "Search dictation history", "kunigunde");
    expect(R::label, "1 saved dictation");
    press(R::pushButton, "Remember correction");
    write(R::text, "Quorvi writes", "kunigunde");
    write(R::text, "Replace with", "Cunégonde");
    expect(R::label, "We met Cunégonde.");
    press(R::pushButton, "Save correction");

    press(R::pushButton, "Delete dictation");
    press(R::pushButton, "Cancel");
    expectGone(R::pushButton, "Cancel");  // with the whole question
    expect(R::label, "We met Kunigunde.");
    press(R::pushButton, "Delete dictation");
    press(R::pushButton, "Delete");
    expect(R::heading, "No matching dictations");
    for (const auto* page : {"Insights", "Settings"}) {
        press(R::radioButton, page);
        expect(R::heading, page);
        EXPECT_EQ(reader_.unnamed(), "") << reader_.everything();
    }
    expect(R::checkBox, "Enable correction for kunigunde");
}

}  // namespace
}  // namespace quorvi::test
