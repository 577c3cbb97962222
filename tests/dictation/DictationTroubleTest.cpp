#include "tests/dictation/DictationFixture.h"

namespace quorvi::test {
namespace {

TEST_F(DictationTest, WhatIsTooShortOrTooQuietIsRefusedWithoutARequest) {
    const std::pair<Duration, float> rows[] = {
        {0ms, -20.0F}, {250ms, -20.0F}, {2s, -60.0F}, {2s, -48.0F}};
    for (const auto& [time, level] : rows) {
        SCOPED_TRACE(testing::Message() << time.count() << " ns at " << level << " dB");
        microphone.setLevel(level);
        dictate(time);
        EXPECT_EQ(model->stage(), Stage::failure);
        EXPECT_EQ(model->message(),
                  "No audible speech detected. Hold the key a little longer and try again.");
        scheduler.advance(1s);
        EXPECT_FALSE(microphone.isCapturing());
    }
    // Let go while an application that hangs is asked.
    accessibility.hang(accessibility.applicationElement(editor));
    accessibility.hang(accessibility.systemWideElement());
    keyboard.press(f8);
    scheduler.post([this] { keyboard.release(f8); });
    scheduler.advance(5s);
    EXPECT_EQ(model->stage(), Stage::failure);
    EXPECT_FALSE(microphone.isCapturing());
    EXPECT_TRUE(service.requests.empty());
}

TEST_F(DictationTest, ARefusedInsertionLeavesTheTextOnTheClipboard) {
    dictate();
    keyboard.tap(0);  // the user types while the service works
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::clipboard);
    EXPECT_EQ(model->message(), "Text copied — press ⌘V in any text field.");
    EXPECT_TRUE(model->canCopyFromOverlay());
    EXPECT_EQ(pasteboard.text(), "Hello there");
    EXPECT_EQ(history.records().size(), 1u);
    EXPECT_TRUE(poster.posts.empty());
    EXPECT_EQ(corrections.learningStatus(),
              "Automatic learning needs a verified paste. Use Remember correction for this copied "
              "transcript.");
    scheduler.advance(12s);
    EXPECT_EQ(overlay, "hidden");

    pasteboard.refusesWrites = true;
    moveCaret();
    dictateToTheEnd();
    EXPECT_EQ(model->stage(), Stage::failure);
    EXPECT_EQ(model->message(),
              "The clipboard is unavailable. Use Copy text to try again, or select the transcript "
              "in Quorvi.");
    pasteboard.refusesWrites = false;
    model->copyTranscript();
    settle();
    EXPECT_EQ(model->stage(), Stage::clipboard);
    EXPECT_EQ(pasteboard.text(), "Hello there");
}

TEST_F(DictationTest, WithoutWhatItNeedsItSaysSo) {
    const auto sentence = [this] {
        dictate();
        return model->message();
    };
    const auto notReady =
        "Open Quorvi from the menu bar, then Settings to finish API key and permission setup.";
    keyStore.remove().start();
    EXPECT_EQ(sentence(), notReady);
    keyStore.save("sk-key").start();
    permissions.setMicrophone(MicrophoneAuthorization::denied);
    EXPECT_EQ(sentence(), notReady);
    permissions.setMicrophone(MicrophoneAuthorization::authorized);
    secureField();
    EXPECT_EQ(sentence(), "Select a regular text field to dictate.");
    EXPECT_EQ(microphone.captures, 0) << "the microphone stayed shut";
    accessibility.unset(field, "AXSubrole");
    microphone.recordFailure = "The microphone could not start. Check your macOS sound input.";
    EXPECT_EQ(sentence(), *microphone.recordFailure);
}

TEST_F(DictationTest, TroubleWhileRecordingEndsInItsSentence) {
    const struct {
        std::function<void()> trouble;
        const char* sentence;
    } rows[] = {
        {[&] { microphone.end(CaptureEnd::deviceLost); },
         "Recording stopped unexpectedly. Please try again."},
        {[&] { permissions.setMicrophone(MicrophoneAuthorization::denied); },
         "A required permission changed. Check Settings before dictating again."},
        {[&] { keyboard.disable(); }, "Keyboard access was interrupted. Try your shortcut again."},
    };
    for (const auto& row : rows) {
        keyboard.press(f8);
        scheduler.advance(1s);
        row.trouble();
        scheduler.advance(2s);
        EXPECT_EQ(model->stage(), Stage::failure);
        EXPECT_EQ(model->message(), row.sentence);
        permissions.setMicrophone(MicrophoneAuthorization::authorized);
        keyboard.release(f8);
    }
    keyboard.press(f8);
    scheduler.advance(1s);
    workspace.sleep();
    EXPECT_EQ(model->stage(), Stage::idle);
    keyboard.release(f8);
    keyboard.invalidate();
    workspace.wake();
    EXPECT_TRUE(model->keyboardReady());
}

TEST_F(DictationTest, ResettingRecoversAndTellsWhatIsMissing) {
    keyboard.press(f8);
    settle();
    model->resetDictation();
    EXPECT_EQ(model->stage(), Stage::idle);
    EXPECT_EQ(model->message(),
              "Dictation reset. Click a text field and hold your shortcut again.");
    accessibility.trusted = false;
    model->resetDictation();
    EXPECT_EQ(model->message(),
              "Dictation reset. Check permissions and API key setup in Settings.");
    keyboard.release(f8);
}

TEST_F(DictationTest, PermissionsAreAskedForOrTheirSettingsOpened) {
    permissions.setMicrophone(MicrophoneAuthorization::notDetermined);
    model->requestMicrophone();
    EXPECT_TRUE(permissions.openedPanes.empty());
    permissions.answer(MicrophoneAuthorization::authorized);
    EXPECT_TRUE(model->microphoneAllowed());
    model->requestMicrophone();
    model->requestAccessibility();
    EXPECT_EQ(permissions.openedPanes,
              (std::vector<PrivacyPane>{PrivacyPane::microphone, PrivacyPane::accessibility}));
    EXPECT_EQ(accessibility.trustRequests, 1);
}

}  // namespace
}  // namespace quorvi::test
