#include "tests/desktop/Desk.h"

namespace quorvi::test {
namespace {

using quorvi::testing::chromium;
using quorvi::testing::featherpad;
using quorvi::testing::gnomeTextEditor;
using quorvi::testing::mousepad;
using quorvi::testing::TestFolder;

class Editors : public Desk {
protected:
    void dictateInto(const std::optional<AXElement>& field, const std::string& before,
                     const std::string& after) {
        ASSERT_TRUE(field);
        copy("what the user had copied");
        startQuorvi();
        dictate();
        EXPECT_EQ(model->stage(), DictationStage::success) << model->message();
        EXPECT_TRUE(untilText(*field, before + writtenSentence + after))
            << reader.value(*field).value_or("(unreadable)");
        EXPECT_EQ(clipboard(), "what the user had copied");
        ASSERT_EQ(history.records().size(), 1u);
        EXPECT_EQ(history.records()[0].text, writtenSentence);
        bool verified = false;
        for (const auto& event : corrections.learningEvents())
            verified |= event.code == "paste.verified" || event.code == "paste.verifiedWholeField";
        EXPECT_TRUE(verified) << corrections.learningEvents().back().code;
    }
    std::string page(const std::string& body) {
        return folder.write("page.html", "<!doctype html><meta charset=utf-8><title>Page</title>" + body);
    }

    TestFolder profile;
};

TEST_F(Editors, AGtkEditorWithTextAroundTheCaret) {
    const auto field = open(mousepad(folder.write("note.txt", "Dear 😀 Maria, regards")));
    ASSERT_TRUE(field);
    for (int i = 0; i < 14; ++i) user.tap(114);  // right
    ASSERT_TRUE(until([&] { return reader.selection(*field) == Utf16Range{15, 0}; }))
        << reader.selection(*field)->location;
    dictateInto(field, "Dear 😀 Maria, ", "regards");
    EXPECT_EQ(model->message(), "Paste sent to Mousepad.");
}

TEST_F(Editors, AGtk4Editor) {
    dictateInto(open(gnomeTextEditor(folder.write("note.txt", "")), "AXTextArea"), "", "");
}

TEST_F(Editors, AQt5Editor) {
    dictateInto(open(featherpad(folder.write("note.txt", "")), "AXTextArea"), "", "");
}

TEST_F(Editors, AQt6EditorOverItsSelection) {
    const auto field = open({QUORVI_QT_FIELDS});
    user.chord({key::leftControl}, key::a);
    ASSERT_TRUE(until([&] { return reader.selection(*field)->length > 0; }));
    dictateInto(field, "", "");
}

TEST_F(Editors, ChromiumsInput) {
    dictateInto(open(chromium(page("<input autofocus value='x'>"), profile), "AXTextField"), "", "x");
}

TEST_F(Editors, ChromiumsTextarea) {
    dictateInto(open(chromium(page("<textarea autofocus></textarea>"), profile)), "", "");
}

TEST_F(Editors, ChromiumsContenteditable) {
    dictateInto(open(chromium(page("<div contenteditable id=e></div><script>e.focus()</script>"),
                              profile)),
                "", "");
}

TEST_F(Editors, ATerminal) {
    const auto output = folder.path() / "typed";
    const auto script = folder.write("read.sh", "read -r line; echo -n \"$line\" > " + output.string());
    ASSERT_TRUE(open({"xfce4-terminal", "--disable-server", "-x", "bash", script}));
    startQuorvi();
    dictate();
    EXPECT_EQ(model->stage(), DictationStage::success) << model->message();
    user.tap(key::enter);
    std::string typed;
    EXPECT_TRUE(until([&] {
        std::ifstream file(output);
        return static_cast<bool>(std::getline(file, typed));
    }));
    EXPECT_EQ(typed, writtenSentence);
}

class Passwords : public Desk {
protected:
    void refused() {
        user.press(key::f8);
        ASSERT_TRUE(untilStage(DictationStage::failure)) << model->message();
        EXPECT_EQ(model->message(), "Select a regular text field to dictate.");
        user.release(key::f8);
    }
    // Waits until a password field has the focus.
    void openPassword(const std::vector<std::string>& command, const std::function<void()>& go = {}) {
        editor = std::make_unique<EditorProcess>(command);
        if (go) go();
        ASSERT_TRUE(until([&] {
            const auto field = reader.focused(editor->pid());
            return field && reader.isSecure(*field);
        }));
        startQuorvi();
    }
    TestFolder profile;
};

TEST_F(Passwords, AreRefusedInGtk) {
    openPassword({"zenity", "--password"});
    refused();
}

TEST_F(Passwords, AreRefusedInQt) {
    openPassword({QUORVI_QT_FIELDS}, [this] {
        ASSERT_TRUE(until([&] {
            const auto field = reader.focused(editor->pid());
            return field && reader.role(*field) == "AXTextArea";
        }));
        user.tap(23);  // Tab, to the line
        user.tap(23);  // Tab, to the password
    });
    refused();
}

TEST_F(Passwords, AreRefusedInChromium) {
    const auto page = folder.write("page.html", "<input type=password autofocus value=secret>");
    openPassword(chromium(page, profile));
    refused();
}

}  // namespace
}  // namespace quorvi::test
