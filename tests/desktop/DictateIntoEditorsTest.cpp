#include "tests/desktop/Desk.h"
#include "tests/support/Paths.h"

namespace quorvi::test {
namespace {

// With the default shortcut, whose lone release moves the focus of many programs to their menu bar;
// with F8 on KDE, which reports no lone modifiers.
class Editors : public Desk {
protected:
    Editors() { useShortcut(isOnKde() ? Hotkey::f8 : Hotkey::rightOption); }
    void dictateInto(const std::optional<AXElement>& field, const std::string& before = {},
                     const std::string& after = {}) {
        ASSERT_TRUE(field);
        copy("what the user had copied");
        startQuorvi();
        dictate(shortcut);
        expectSentence(*field, before, after);
        EXPECT_EQ(clipboard(), "what the user had copied");
        ASSERT_EQ(history.records().size(), 1u);
        EXPECT_EQ(history.records()[0].text, writtenSentence);
        bool verified = false;
        for (const auto& event : corrections.learningEvents())
            verified |= event.code == "paste.verified" || event.code == "paste.verifiedWholeField";
        EXPECT_TRUE(verified) << corrections.learningEvents().back().code;
    }

    const std::uint8_t shortcut = isOnKde() ? key::f8 : key::rightAlt;
};

TEST_F(Editors, AGtkEditorWithTextAroundTheCaret) {
    const auto field = open(mousepad(folder.write("note.txt", "Dear 😀 Maria, regards")));
    ASSERT_TRUE(field);
    user.tap(key::right, 14);
    ASSERT_TRUE(until([&] { return reader.selection(*field) == Utf16Range{15, 0}; }))
        << reader.selection(*field)->location;
    dictateInto(field, "Dear 😀 Maria, ", "regards");
    EXPECT_EQ(model->message(),
              isOnSway() ? say::textSent("Mousepad") : say::pasteSent("Mousepad"));
}

TEST_F(Editors, AGtk4Editor) {
    dictateInto(open(gnomeTextEditor(folder.write("note.txt", ""))));
}

// On KDE also with a library of its own over Qt.
TEST_F(Editors, AQt5Editor) {
    const auto note = folder.write("note.txt", "");
    dictateInto(open(isOnKde() ? Command{"kwrite", note} : featherpad(note)));
}

TEST_F(Editors, EscapeEndsADictationThatIsHeldAndDoesNotReachTheEditor) {
    const auto field = openMousepad("untouched");
    ASSERT_TRUE(field);
    startQuorvi();
    record(shortcut);
    user.tap(key::escape);
    EXPECT_TRUE(untilDone());
    user.release(shortcut);
    wait(std::chrono::milliseconds(300));
    EXPECT_EQ(model->stage(), DictationStage::idle) << model->message();
    EXPECT_EQ(reader.value(*field), "untouched");
}

TEST_F(Editors, AModifierThatTheUserHoldsIsNoPartOfThePaste) {
    const auto field = open({builtProgram("qt_fields"), "--empty"});
    ASSERT_TRUE(field);
    startQuorvi();
    record(shortcut);
    release(shortcut);
    user.press(key::leftShift);
    ASSERT_TRUE(untilStage(DictationStage::inserting)) << model->message();
    wait(std::chrono::milliseconds(300));
    user.release(key::leftShift);
    EXPECT_TRUE(untilDone());
    expectSentence(*field);
}

TEST_F(Editors, AQt6EditorOverItsSelection) {
    const auto field = open({builtProgram("qt_fields")});
    user.chord({key::leftControl}, key::a);
    ASSERT_TRUE(until([&] { return reader.selection(*field)->length > 0; }));
    dictateInto(field);
}

TEST_F(Editors, ChromiumsInput) {
    dictateInto(open(chromium("<input autofocus value='x'>", folder), "AXTextField"), "", "x");
}

TEST_F(Editors, ChromiumsTextarea) {
    dictateInto(open(chromium("<textarea autofocus></textarea>", folder)));
}

TEST_F(Editors, ChromiumsContenteditable) {
    dictateInto(
        open(chromium("<div contenteditable id=e></div><script>e.focus()</script>", folder)));
}

TEST_F(Editors, ATerminal) {
    const auto output = folder.path() / "typed";
    const auto script =
        folder.write("read.sh", "echo; read -r line; echo -n \"$line\" > " + output.string());
    copy("what the user had copied");
    startQuorvi();
    std::vector<Command> terminals{{"xfce4-terminal", "--disable-server", "-x"}};
    if (isOnSway()) terminals.push_back({"foot"});  // which the accessibility bus does not know
    for (auto& terminal : terminals) {
        std::filesystem::remove(output);
        terminal.insert(terminal.end(), {"bash", script});
        if (terminal[0] == "foot") {
            editor = Process(terminal);
            ASSERT_TRUE(user.bringToFront(editor.pid()));
        } else {
            ASSERT_TRUE(open(terminal));
        }
        dictate(shortcut);
        // KDE tells nobody that the clipboard was read, and a terminal shows nothing.
        EXPECT_EQ(model->stage(), isOnKde() ? DictationStage::clipboard : DictationStage::success)
            << model->message();
        EXPECT_EQ(model->message().is(Sentence::textSent), isOnSway()) << model->message();
        user.tap(key::enter);
        EXPECT_TRUE(until([&] { return contentOf(output) == writtenSentence; }))
            << contentOf(output);
        EXPECT_EQ(clipboard(), isOnKde() ? writtenSentence : "what the user had copied");
    }
}

TEST_F(Editors, AButtonDoesNotTakeTheTextWhichStaysOnTheClipboard) {
    ASSERT_TRUE(open({builtProgram("qt_fields")}));
    user.tap(key::tab, 5);
    copy("what the user had copied");
    startQuorvi();
    dictate(shortcut);
    EXPECT_EQ(model->stage(), DictationStage::clipboard);
    EXPECT_EQ(model->message().id(), Sentence::textNotTaken);
    EXPECT_EQ(clipboard(), writtenSentence);
    model->restoreClipboard();
    EXPECT_EQ(clipboard(), "what the user had copied");
}

TEST_F(Editors, PasswordsAreRefused) {
    startQuorvi();
    const TestFolder flatpak, other;
    const std::string gtk3 = "yad --entry --hide-text";
    const Command programs[] = {{"yad", "--entry", "--hide-text"},
                                {builtProgram("qt_fields")},
                                sandboxed(gtk3, "1234", flatpak),
                                sandboxed(gtk3, "", other),
                                chromium("<input type=password autofocus value=secret>", folder)};
    for (const auto& program : programs) {
        editor = Process(program);
        if (program[0] == builtProgram("qt_fields")) {
            ASSERT_TRUE(reader.waitForFocus(editor.pid(), "AXTextArea"));
            user.tap(key::tab, 2);
        }
        ASSERT_TRUE(eventually([&] {
            auto field = reader.focused(editor.pid());
            if (!field) field = reader.focusedAnywhere();
            return field && reader.isSecure(*field) && workspace->frontmostApplication();
        })) << program[0];
        model->resetDictation();
        user.press(shortcut);
        ASSERT_TRUE(untilStage(DictationStage::failure)) << model->message();
        EXPECT_EQ(model->message(), say::selectRegularField()) << program[0];
        user.release(shortcut);
    }
}

}  // namespace
}  // namespace quorvi::test
