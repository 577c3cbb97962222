#include <cstdlib>

#include "tests/desktop/Desk.h"
#include "tests/linux/support/ForeignOwner.h"

#include "tests/linux/support/DesktopUser.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;
using quorvi::testing::mousepad;

PasteboardRepresentation representation(std::string type, Bytes data) {
    auto shared = std::make_shared<const Bytes>(std::move(data));
    return {.type = type, .encoding = type, .format = 8, .data = std::move(shared)};
}

Bytes bytes(std::string_view text) { return {text.begin(), text.end()}; }

class BadDays : public Desk {
protected:
    void SetUp() override {
        field = open(mousepad(folder.write("note.txt", "")));
        ASSERT_TRUE(field);
    }
    void record() {
        user.press(key::f8);
        ASSERT_TRUE(untilStage(DictationStage::recording)) << model->message();
        speak();
    }
    void release() {
        user.release(key::f8);
        ASSERT_TRUE(until([this] { return model->stage() != DictationStage::recording; }));
    }
    // The words that could not be inserted are on the clipboard.
    void expectManualPaste() {
        ASSERT_TRUE(untilDone());
        EXPECT_EQ(model->stage(), DictationStage::clipboard) << model->message();
        EXPECT_EQ(model->message(), "Text copied — press ⌘V in any text field.");
        EXPECT_EQ(clipboard(), writtenSentence);
        EXPECT_EQ(history.records().size(), 1u);
    }

    std::optional<AXElement> field;
};

TEST_F(BadDays, AClipboardOfPictureHtmlAndTextComesBackByteForByte) {
    Bytes picture(3'000'000);
    for (std::size_t i = 0; i < picture.size(); ++i)
        picture[i] = static_cast<std::uint8_t>(i * 2654435761u >> 13);
    const std::vector<PasteboardItem> items{
        {{representation("image/png", picture), representation("text/html", bytes("<b>mine</b>")),
          representation("UTF8_STRING", bytes("mine")),
          representation("application/x-own-type", bytes(std::string("\0\1\2", 3)))}}};
    auto owner = std::make_unique<ForeignOwner>(items);
    startQuorvi();
    dictate();
    EXPECT_EQ(model->stage(), DictationStage::success) << model->message();
    EXPECT_TRUE(untilText(*field, writtenSentence));
    owner.reset();  // what is read now comes from us
    const auto back = clipboard("image/png");
    EXPECT_TRUE(bytes(back) == picture) << back.size() << " bytes";
    EXPECT_EQ(clipboard("text/html"), "<b>mine</b>");
    EXPECT_EQ(clipboard(), "mine");
    EXPECT_EQ(clipboard("application/x-own-type"), std::string("\0\1\2", 3));
}

TEST_F(BadDays, AClipboardOwnerThatHangsCostsNoWords) {
    ForeignOwner owner({{{representation("UTF8_STRING", bytes("mine"))}}}, {.silent = true});
    startQuorvi();
    record();
    release();
    expectManualPaste();
}

TEST_F(BadDays, TheCaretMovedWhileTheServiceWorked) {
    editor.reset();
    field = open(mousepad(folder.write("text.txt", "one two")));
    startQuorvi();
    record();
    release();
    // The editor moves its caret without the user, as a running script would.
    user.tap(115);
    expectManualPaste();
    EXPECT_EQ(reader.value(*field), "one two");
}

TEST_F(BadDays, AnotherWindowCameToTheFront) {
    quorvi::testing::DesktopUser windows;
    const auto first = windows.activeWindow();
    EditorProcess other(mousepad(folder.write("other.txt", "")));
    ASSERT_TRUE(windows.waitForWindowOf(other.pid()));
    const auto second = windows.activeWindow();
    windows.activate(first);
    ASSERT_TRUE(windows.waitForWindowOf(editor->pid()));
    startQuorvi();
    record();
    windows.activate(second);
    ASSERT_TRUE(windows.waitForWindowOf(other.pid()));
    release();
    expectManualPaste();
    EXPECT_EQ(reader.value(*field), "");
    const auto otherField = reader.focused(other.pid());
    ASSERT_TRUE(otherField);
    EXPECT_EQ(reader.value(*otherField), "");
}

TEST_F(BadDays, TheApplicationWentAway) {
    startQuorvi();
    record();
    editor->kill();
    release();
    expectManualPaste();
}

TEST_F(BadDays, AHungApplicationFreezesNothingAndGetsItsTextOrTheClipboardDoes) {
    startQuorvi();
    record();
    editor->stop();
    release();
    // The loop goes on turning while the application is asked.
    int turns = 0;
    const auto ticks = scheduler.every(5ms, [&] { ++turns; });
    ASSERT_TRUE(untilDone());
    EXPECT_GT(turns, 20);
    EXPECT_EQ(model->stage(), DictationStage::clipboard) << model->message();
    editor->resume();
    EXPECT_EQ(clipboard(), writtenSentence);

    user.press(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::recording)) << "usable again: " << model->message();
    user.release(key::f8);
}

TEST_F(BadDays, AHungApplicationAtTheStart) {
    startQuorvi();
    editor->stop();
    user.press(key::f8);
    ASSERT_TRUE(until([this] { return model->stage() != DictationStage::idle; }));
    EXPECT_EQ(model->stage(), DictationStage::recording) << "without its field";
    speak();
    editor->resume();
    user.release(key::f8);
    ASSERT_TRUE(until([this] { return model->stage() != DictationStage::recording; }));
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(history.records().size(), 1u);
}

TEST_F(BadDays, AModifierThatIsHeldKeepsThePasteBack) {
    startQuorvi();
    record();
    release();
    user.press(key::leftControl);
    ASSERT_TRUE(untilStage(DictationStage::inserting));
    wait(500ms);
    EXPECT_EQ(reader.value(*field), "") << "no Control+Shift chord was made of it";
    user.release(key::leftControl);
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(model->stage(), DictationStage::success) << model->message();
    EXPECT_TRUE(untilText(*field, writtenSentence));
}

TEST_F(BadDays, TheServiceRefusesTheKeyOrIsGone) {
    SpeechService refusing;
    keyStore.save("bad-key").start();
    startQuorvi(refusing.address());
    record();
    release();
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(model->message(), "Your API key was rejected. Replace it in Settings.");

    refusing.end();
    record();
    release();
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(model->stage(), DictationStage::failure);
    EXPECT_NE(model->message(), "");
    EXPECT_TRUE(history.records().empty());
    EXPECT_EQ(reader.value(*field), "");
}

TEST_F(BadDays, SilenceIsNotSent) {
    startQuorvi();
    model->setSoundCuesEnabled(false);
    user.press(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::recording));
    wait(600ms);
    release();
    EXPECT_EQ(model->message(),
              "No audible speech detected. Hold the key a little longer and try again.");
}

TEST_F(BadDays, TheMicrophoneIsPulledOutAndPutBack) {
    startQuorvi();
    user.press(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::recording));
    wait(300ms);
    ASSERT_EQ(std::system("pactl unload-module module-remap-source"), 0);
    ASSERT_TRUE(untilStage(DictationStage::failure));
    EXPECT_TRUE(model->message() == "Recording stopped unexpectedly. Please try again." ||
                model->message() ==
                    "A required permission changed. Check Settings before dictating again.")
        << model->message();
    user.release(key::f8);
    EXPECT_TRUE(until([this] { return !model->microphoneAllowed(); }));
    user.tap(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::failure));
    ASSERT_EQ(std::system("pactl load-module module-remap-source master=mic_feed.monitor "
                          "source_name=mic >/dev/null && pactl set-default-source mic"),
              0);
    EXPECT_TRUE(until([this] { return model->ready(); }));
    dictate();
    EXPECT_EQ(model->stage(), DictationStage::success) << model->message();
}

TEST_F(BadDays, AccessibilityIsSwitchedOffAndOn) {
    startQuorvi();
    const auto setEnabled = [](const char* value) {
        return std::system((std::string("gdbus call --session -d org.a11y.Bus -o /org/a11y/bus -m "
                                        "org.freedesktop.DBus.Properties.Set org.a11y.Status "
                                        "IsEnabled '<") +
                            value + ">' >/dev/null")
                               .c_str());
    };
    ASSERT_EQ(setEnabled("false"), 0);
    EXPECT_TRUE(until([this] { return !model->accessibilityAllowed(); }));
    EXPECT_FALSE(model->keyboardReady());
    model->start();
    EXPECT_EQ(model->message(),
              "Open Quorvi from the menu bar, then Settings to finish API key and permission setup.");
    desktop_->environment(preferences, keyStore, history, corrections, observer)
        .accessibility.requestTrust();
    EXPECT_TRUE(until([this] { return model->ready(); }));
}

}  // namespace
}  // namespace quorvi::test
