#include "tests/desktop/Desk.h"
#include "tests/support/clipboard/ForeignOwner.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;
class BadDays : public Desk {
protected:
    void SetUp() override {
        field = open(mousepad(folder.write("note.txt", "")));
        ASSERT_TRUE(field);
    }
    // The words that could not be inserted are on the clipboard.
    void expectManualPaste() {
        ASSERT_TRUE(untilDone());
        EXPECT_EQ(model->stage(), DictationStage::clipboard) << model->message();
        EXPECT_EQ(model->message(), say::textCopied());
        EXPECT_EQ(clipboard(), writtenSentence);
        EXPECT_EQ(history.records().size(), 1u);
    }

    std::optional<AXElement> field;
};

TEST_F(BadDays, AClipboardOfPictureHtmlAndTextComesBackByteForByte) {
    std::string picture(3'000'000, 0);
    for (std::size_t i = 0; i < picture.size(); ++i)
        picture[i] = static_cast<char>(i * 2654435761u >> 13);
    const std::string own("\0\1\2", 3);
    auto owner = std::make_unique<ForeignOwner>(std::vector<PasteboardItem>{
        {{representation("image/png", picture), representation("text/html", "<b>mine</b>"),
          representation("UTF8_STRING", "mine"), representation("application/x-own-type", own)}}});
    startQuorvi();
    dictate();
    expectSentence(*field);
    owner.reset();  // what is read now comes from us
    EXPECT_TRUE(clipboard("image/png") == picture);
    EXPECT_EQ(clipboard("text/html"), "<b>mine</b>");
    EXPECT_EQ(clipboard(), "mine");
    EXPECT_EQ(clipboard("application/x-own-type"), own);
}

TEST_F(BadDays, AClipboardOwnerThatHangsCostsNoWords) {
    ForeignOwner owner(textItems("mine"), {.silent = true});
    startQuorvi();
    record();
    release();
    expectManualPaste();
}

TEST_F(BadDays, TheCaretMovedWhileTheServiceWorked) {
    field = open(mousepad(folder.write("text.txt", "one two")));
    startQuorvi();
    record();
    release();
    // The editor moves its caret without the user, as a running script would.
    user.tap(key::end);
    expectManualPaste();
    EXPECT_EQ(reader.value(*field), "one two");
}

TEST_F(BadDays, AnotherWindowCameToTheFront) {
    const auto first = user.activeWindow();
    Process other(mousepad(folder.write("other.txt", "")));
    ASSERT_TRUE(user.waitForWindowOf(other.pid()));
    const auto second = user.activeWindow();
    user.activate(first);
    ASSERT_TRUE(user.waitForWindowOf(editor.pid()));
    startQuorvi();
    record();
    user.activate(second);
    ASSERT_TRUE(user.waitForWindowOf(other.pid()));
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
    editor.kill();
    release();
    expectManualPaste();
}

TEST_F(BadDays, AHungApplicationFreezesNothingAndGetsItsTextOrTheClipboardDoes) {
    startQuorvi();
    record();
    editor.freeze();
    release();
    // The loop goes on turning while the application is asked.
    int turns = 0;
    const auto ticks = scheduler.every(5ms, [&] { ++turns; });
    ASSERT_TRUE(untilDone());
    EXPECT_GT(turns, 20);
    EXPECT_EQ(model->stage(), DictationStage::clipboard) << model->message();
    editor.thaw();
    EXPECT_EQ(clipboard(), writtenSentence);

    user.press(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::recording)) << "usable again: " << model->message();
    user.release(key::f8);
}

TEST_F(BadDays, AHungApplicationAtTheStart) {
    startQuorvi();
    editor.freeze();
    user.press(key::f8);
    ASSERT_TRUE(until([this] { return model->stage() != DictationStage::idle; }));
    EXPECT_EQ(model->stage(), DictationStage::recording) << "without its field";
    speak();
    editor.thaw();
    release();
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
    expectSentence(*field);
}

TEST_F(BadDays, TheServiceRefusesTheKeyOrIsGone) {
    SpeechService refusing;
    keyStore.save("bad-key").start();
    startQuorvi(refusing.address());
    record();
    release();
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(model->message(), say::apiKeyRejected());

    refusing.end();
    record();
    release();
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(model->stage(), DictationStage::failure);
    EXPECT_FALSE(model->message().isEmpty());
    EXPECT_TRUE(history.records().empty());
    EXPECT_EQ(reader.value(*field), "");
}

TEST_F(BadDays, TheMicrophoneIsPulledOutAndPutBack) {
    startQuorvi();
    user.press(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::recording));
    wait(300ms);
    shell("pactl unload-module module-remap-source");
    ASSERT_TRUE(untilStage(DictationStage::failure));
    EXPECT_TRUE(model->message().is(Sentence::recordingStopped) ||
                model->message().is(Sentence::permissionChanged))
        << model->message();
    user.release(key::f8);
    EXPECT_TRUE(until([this] { return !model->microphoneAllowed(); }));
    user.tap(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::failure));
    shell(
        "pactl load-module module-remap-source master=mic_feed.monitor source_name=mic && "
        "pactl set-default-source mic");
    EXPECT_TRUE(until([this] { return model->ready(); }));
    dictate();
    EXPECT_EQ(model->stage(), DictationStage::success) << model->message();
}

TEST_F(BadDays, AccessibilityIsSwitchedOffAndOn) {
    startQuorvi();
    shell(
        "gdbus call --session -d org.a11y.Bus -o /org/a11y/bus -m "
        "org.freedesktop.DBus.Properties.Set org.a11y.Status IsEnabled '<false>'");
    EXPECT_TRUE(until([this] { return !model->accessibilityAllowed(); }));
    EXPECT_FALSE(model->keyboardReady());
    model->start();
    EXPECT_EQ(model->message(), say::finishSetup());
    desktop_->environment(localKeys, preferences, keyStore, history, corrections)
        .accessibility.requestTrust();
    EXPECT_TRUE(until([this] { return model->ready(); }));
}

}  // namespace
}  // namespace quorvi::test
