#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/Keyring.h"
#include "tests/support/desktop/ScreenReader.h"
#include "tests/support/desktop/TestUser.h"
#include "tests/support/sound/SoundServer.h"

namespace quorvi::test {
namespace {

using R = ScreenReader;

constexpr auto refusedKey = "QUORVI_API_KEY=not a key";  // refused, so the key stays in memory

// The program itself, used through the accessibility bus alone, as somebody does who can't see it.
class WindowByScreenReader : public testing::Test {
protected:
    explicit WindowByScreenReader(const std::vector<std::string>& settings = {refusedKey})
        : quorvi({builtProgram("quorvi"), "--print-stages"}, settings), reader(quorvi.pid()) {}

    void press(R::Role role, const std::string& name) {
        ASSERT_TRUE(reader.press(role, name)) << name << " is not in:\n" << reader.everything();
    }
    void write(R::Role role, const std::string& name, const std::string& text) {
        ASSERT_TRUE(reader.write(role, name, text)) << name << " is not in:\n"
                                                    << reader.everything();
    }
    void expect(R::Role role, const std::string& name) {
        EXPECT_TRUE(reader.sees(role, name)) << name << " is not in:\n" << reader.everything();
    }
    void openPage(const std::string& name) {
        press(R::radioButton, name);
        expect(R::heading, name);
    }

    Process quorvi;
    ScreenReader reader;
    TestUser user;
};

// On a new machine: no key, no microphone, accessibility switched off.
TEST(FirstRun, EachRowIsReadyAsSoonAsTheUserHasSeenToIt) {
    const Process keyring(Keyring::daemon(Keyring::Begin::unlocked));
    const SoundServer sound(SoundServer::Microphone::absent);
    const auto setAccessibility = [](const char* on) {
        shell(std::string("gdbus call --session -d org.a11y.Bus -o /org/a11y/bus -m "
                          "org.freedesktop.DBus.Properties.Set org.a11y.Status IsEnabled '<") +
              on + ">'");
    };
    setAccessibility("false");
    const Process quorvi({builtProgram("quorvi")}, {"PULSE_SERVER=" + sound.address()});
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
    EXPECT_TRUE(reader.sees(R::heading, "Complete setup to start"));
    for (const auto& each : rows) {
        each.fix();
        EXPECT_TRUE(reader.missesSoon(R::pushButton, each.row)) << reader.everything();
    }
    EXPECT_TRUE(reader.sees(R::heading, "Ready when you are"));
    EXPECT_TRUE(reader.missesSoon(R::heading, "Make it yours"));
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
    EXPECT_TRUE(reader.missesSoon(R::heading, "Make it yours"));

    const TestFolder folder;
    const Process editor(mousepad(folder.write("note.txt", "")));
    AtspiAccessibility accessibility([] { return true; });
    FieldReader fields(accessibility);
    ASSERT_TRUE(user.bringToFront(editor.pid()));
    const auto field = fields.waitForFocus(editor.pid(), "AXTextArea");
    ASSERT_TRUE(field);
    press(R::pushButton, "Test paste");
    expect(R::pushButton, "Cancel test");
    const std::string sample = "Hello, world. Καλημέρα, κόσμε.";
    EXPECT_TRUE(eventually([&] { return fields.value(*field) == sample; }))
        << fields.value(*field).value_or("(unreadable)");
    press(R::radioButton, "Settings");
    press(R::pushButton, "Remove key");
    EXPECT_TRUE(reader.missesSoon(R::label, "Saved"));
}

TEST_F(WindowByScreenReader, AShortcutIsChosenByPressingIt) {
    press(R::pushButton, "Change shortcut");
    expect(R::pushButton, "Keep the shortcut");
    ASSERT_TRUE(user.bringToFront(quorvi.pid()));
    user.tap(key::escape);
    expect(R::label, "Shortcut: Right ⌥");
    press(R::pushButton, "Change shortcut");
    expect(R::pushButton, "Keep the shortcut");
    user.tap(key::f6);
    expect(R::label, "Shortcut: F6");
    EXPECT_TRUE(reader.missesSoon(R::pushButton, "Keep the shortcut"));
}

TEST_F(WindowByScreenReader, RulesAreAddedSearchedDisabledEditedAndDeleted) {
    openPage("Settings");
    press(R::pushButton, "Add correction");
    write(R::text, "Quorvi writes", "kunigunde");
    write(R::text, "Replace with", "Cunégonde");
    press(R::pushButton, "Save correction");
    const std::string box = "Enable correction for kunigunde";
    expect(R::checkBox, box);
    EXPECT_TRUE(reader.isChecked(R::checkBox, box));
    press(R::checkBox, box);
    EXPECT_TRUE(eventually([&] { return !reader.isChecked(R::checkBox, box); }));

    write(R::text, "Search corrections", "no such rule");
    EXPECT_TRUE(reader.missesSoon(R::checkBox, box));
    write(R::text, "Search corrections", "CUNÉ");
    expect(R::checkBox, box);

    press(R::pushButton, "Edit correction for kunigunde");
    write(R::text, "Quorvi writes", "kuni gunde");
    press(R::pushButton, "Save correction");
    expect(R::checkBox, "Enable correction for kuni gunde");
    press(R::pushButton, "Delete correction for kuni gunde");
    EXPECT_TRUE(reader.missesSoon(R::checkBox, "Enable correction for kuni gunde"));
}

// A folder of data with three dictations, one of them six weeks old.
struct SavedHistory {
    SavedHistory() {
        const double now = static_cast<double>(std::time(nullptr)) - 978'307'200;
        std::string records;
        for (const auto& [text, days] : {std::pair{"We met Kunigunde.", 0.01},
                                         {"The other one of today.", 0.02},
                                         {"It was six weeks ago.", 42.0}}) {
            const auto id =
                "00000000-0000-4000-8000-" + std::to_string(100'000'000'000 + records.size());
            records +=
                std::string(records.empty() ? "" : ",") + R"({"id":")" + id + R"(","date":)" +
                std::to_string(now - days * 86'400) + R"(,"text":")" + text +
                R"(","wordCount":3,"audioSeconds":2,"appName":"Mail","language":"automatic"})";
        }
        std::filesystem::create_directories(data.path() / "Quorvi");
        data.write("Quorvi/history.json", R"({"records":[)" + records + R"(],"version":1})");
    }
    const TestFolder data;
};

class HistoryByScreenReader : public SavedHistory, public WindowByScreenReader {
protected:
    HistoryByScreenReader()
        : WindowByScreenReader({refusedKey, "XDG_DATA_HOME=" + data.path().string()}) {}
};

TEST_F(HistoryByScreenReader, DictationsAreFoundRememberedFromAndDeleted) {
    openPage("History");
    expect(R::label, "3 saved dictations");
    write(R::text, "Search dictation history", "kunigunde");
    expect(R::label, "1 saved dictations");
    press(R::pushButton, "Remember correction");
    write(R::text, "Quorvi writes", "kunigunde");
    write(R::text, "Replace with", "Cunégonde");
    expect(R::label, "We met Cunégonde.");
    press(R::pushButton, "Save correction");

    press(R::pushButton, "Delete dictation");
    press(R::pushButton, "Cancel");
    expect(R::label, "We met Kunigunde.");
    press(R::pushButton, "Delete dictation");
    press(R::pushButton, "Delete");
    expect(R::heading, "No matching dictations");
    press(R::pushButton, "Clear search");
    expect(R::label, "2 saved dictations");
    EXPECT_TRUE(reader.missesSoon(R::label, "We met Kunigunde."));
    openPage("Settings");
    expect(R::checkBox, "Enable correction for kunigunde");
}

TEST_F(HistoryByScreenReader, RetentionIsChosenAndSyncSwitched) {
    openPage("History");
    expect(R::label, "It was six weeks ago.");
    openPage("Settings");
    EXPECT_EQ(reader.chosen("Keep transcript text"), "90 days");
    ASSERT_TRUE(user.bringToFront(quorvi.pid()));
    ASSERT_TRUE(reader.focus("Keep transcript text"));
    user.tap(key::up);
    EXPECT_TRUE(eventually([&] { return reader.chosen("Keep transcript text") == "30 days"; }));

    const auto* sync = "Sync with my Apple Account";
    EXPECT_TRUE(reader.isChecked(R::checkBox, sync));
    press(R::checkBox, sync);
    expect(R::label, "Sync paused on this Mac");
    EXPECT_FALSE(reader.isChecked(R::checkBox, sync));
    EXPECT_FALSE(reader.isEnabled(R::pushButton, "Sync now"));
    press(R::checkBox, sync);
    EXPECT_TRUE(reader.missesSoon(R::label, "Sync paused on this Mac"));

    openPage("History");
    EXPECT_TRUE(reader.missesSoon(R::label, "It was six weeks ago.")) << "30 days are over";
}

TEST_F(HistoryByScreenReader, EverythingThatCanBeUsedHasAName) {
    for (const auto* page : {"Settings", "Insights", "History"}) {
        openPage(page);
        if (page == std::string("History")) expect(R::label, "3 saved dictations");
        EXPECT_EQ(reader.unnamed(), "") << page << ":\n" << reader.everything();
    }
}

}  // namespace
}  // namespace quorvi::test
