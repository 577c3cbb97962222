#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "Quorvi/platform/linux/AtspiAccessibility.h"
#include "tests/support/Editors.h"
#include "tests/support/FieldReader.h"
#include "tests/support/Process.h"
#include "tests/support/ScreenReader.h"
#include "tests/support/TestUser.h"

namespace quorvi::test {
namespace {

using R = ScreenReader;

constexpr auto refusedKey = "QUORVI_API_KEY=not a key";  // refused, so the key stays in memory

// The program itself, used through the accessibility bus alone, as somebody does who can't see it.
class WindowByScreenReader : public testing::Test {
protected:
    WindowByScreenReader()
        : quorvi({QUORVI_PROGRAM, "--print-stages"}, {refusedKey}), reader(quorvi.pid()) {}

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
    void openSettings() {
        press(R::radioButton, "Settings");
        expect(R::heading, "Settings");
    }

    Process quorvi;
    ScreenReader reader;
    TestUser user;
};

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
    openSettings();
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

}  // namespace
}  // namespace quorvi::test
