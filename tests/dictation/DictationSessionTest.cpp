#include "tests/dictation/DictationFixture.h"

namespace quorvi::test {
namespace {

TEST_F(DictationTest, RunsFromTheShortcutToTheInsertedText) {
    keyboard.press(f8);
    settle();
    expect(Stage::recording, say::dictatingInto("Editor"));
    EXPECT_EQ(overlay, "shown");
    EXPECT_EQ(cues(), 1);
    scheduler.advance(1s);
    EXPECT_NEAR(model->elapsed(), 1, 0.06);
    EXPECT_NEAR(model->level(), 0.7, 0.001);
    keyboard.release(f8);
    settle();
    expect(Stage::transcribing, say::convertingSpeech());
    EXPECT_EQ(cues(), 2);
    EXPECT_TRUE(recordings.named.empty());

    scheduler.advance(500ms);
    expect(Stage::inserting, say::insertingInto("Editor"));
    EXPECT_EQ(fieldText(), "Dear Hello there");
    ASSERT_EQ(history.records().size(), 1u);
    const auto& record = history.records()[0];
    EXPECT_EQ(record.text, "Hello there");
    EXPECT_EQ(record.appName, "Editor");
    EXPECT_EQ(record.language, "automatic");
    EXPECT_EQ(record.costEstimate->modelID, "gpt-transcribe");
    EXPECT_NEAR(record.audioSeconds, 1, 0.01);

    scheduler.advance(1s);
    expect(Stage::success, say::pasteSent("Editor"));
    EXPECT_EQ(pasteboard.text(), "mine");
    EXPECT_EQ(lastCode(), "observer.started");
    EXPECT_FALSE(model->hotkey().cancelEnabled());
    scheduler.advance(2s);
    EXPECT_EQ(overlay, "hidden");
    EXPECT_EQ(model->stage(), Stage::success) << "the stage stays";
}

TEST_F(DictationTest, AFieldThatNobodyKnowsIsSaidToBeUnchecked) {
    workspace.setFrontmost(RunningApplication{editor + 1, "Boxed"});
    keyboard.press(f8);
    settle();
    expect(Stage::recording, say::uncheckedField("Boxed"));
}

TEST_F(DictationTest, AnApplicationThatIsBusyAtThePressTellsItsFieldWhileTheUserSpeaks) {
    const auto pressWhileBusy = [this] {
        const auto application = accessibility.applicationElement(editor);
        accessibility.hang(application);
        accessibility.hang(accessibility.systemWideElement());
        keyboard.press(f8);
        settle();  // the queries end, later than a millisecond
        settle();
        expect(Stage::recording, say::uncheckedField("Editor"));
        accessibility.setDelay(application, 0ms);
        scheduler.advance(500ms);
    };
    pressWhileBusy();
    expect(Stage::recording, say::dictatingInto("Editor"));
    moveCaret();
    keyboard.release(f8);
    scheduler.advance(2s);
    EXPECT_EQ(fieldText(), "Dear ") << "the caret is checked, too";
    secureField();
    pressWhileBusy();
    expectFailure(say::selectRegularField());
    EXPECT_FALSE(microphone.isCapturing());
}

// Every timer that stays wakes the processor up and costs battery.
TEST_F(DictationTest, LeavesNoTimerBehindButThePollOfThePermissions) {
    const std::vector<Duration> idle{2s};
    EXPECT_EQ(scheduler.timers(), idle);
    dictateToTheEnd();
    EXPECT_GT(scheduler.timers().size(), 1u) << "the field is watched for the user's own edits";
    scheduler.advance(2min);
    EXPECT_EQ(scheduler.timers(), idle);
    keyboard.press(f8);
    scheduler.advance(1s);
    model->cancel();
    model->armInsertionTest(AppModel::Sample::learning);
    scheduler.advance(1s);
    model->cancel();
    scheduler.advance(10s);
    EXPECT_EQ(scheduler.timers(), idle);
}

TEST_F(DictationTest, TheStartCueItselfIsNotTakenForSpeech) {
    // Loud while the cue sounds, silent afterwards.
    microphone.levels = [](double seconds) { return seconds < 0.18 ? -10.0F : -70.0F; };
    const auto stageAfterAWord = [this] {
        dictate(600ms);
        return model->stage();
    };
    EXPECT_EQ(stageAfterAWord(), Stage::failure);
    model->setSoundStyle(RecordingCue::start, RecordingSoundStyle::silent);
    EXPECT_EQ(stageAfterAWord(), Stage::transcribing);
}

TEST_F(DictationTest, FinishesByItselfAfterThreeMinutesAndIgnoresTheShortcutWhileWorking) {
    model->setMode(DictationMode::toggle);
    keyboard.tap(f8);
    scheduler.advance(179s);
    EXPECT_EQ(model->stage(), Stage::recording);
    scheduler.advance(1100ms);
    for (const auto stage : {Stage::transcribing, Stage::inserting}) {
        settle();
        keyboard.tap(f8);
        settle();
        EXPECT_EQ(model->stage(), stage);
        scheduler.advance(600ms);
    }
    EXPECT_EQ(microphone.captures, 1);
}

TEST_F(DictationTest, EscapeAtAnyMomentLeavesNothingBehind) {
    for (auto moment : {200ms, 1050ms, 1300ms, 1700ms, 2200ms}) {
        SCOPED_TRACE(moment.count());
        const auto saved = history.records().size();
        keyboard.press(f8);
        scheduler.advance(std::min<Duration>(moment, 1s));
        if (moment > 1s) {
            keyboard.release(f8);
            scheduler.advance(moment - 1s);
        }
        keyboard.tap(keyCode::escape);
        keyboard.release(f8);
        settle();
        EXPECT_EQ(overlay, "hidden");
        EXPECT_FALSE(microphone.isCapturing());
        scheduler.advance(10s);
        expect(Stage::idle, say::dictationCancelled());
        EXPECT_EQ(pasteboard.text(), "mine");
        EXPECT_EQ(history.records().size(), saved + (moment > 1500ms ? 1 : 0))
            << "words that were recognised are kept";
        moveCaret();
    }
}

TEST_F(DictationTest, AnAnswerThatArrivesAfterACancelIsDropped) {
    service.deaf = true;
    dictate();
    model->cancel();
    service.body = R"({"text":"second"})";
    dictateToTheEnd();
    EXPECT_EQ(model->stage(), Stage::success) << "a dictation started meanwhile is its own";
    ASSERT_EQ(history.records().size(), 1u);
    EXPECT_EQ(history.records()[0].text, "second");
}

TEST_F(DictationTest, ARecordingThatIsTooShortOrTooQuietIsRefusedWithoutARequest) {
    const std::pair<Duration, float> rows[] = {
        {0ms, -20.0F}, {250ms, -20.0F}, {2s, -60.0F}, {2s, -48.0F}};
    for (const auto& [time, level] : rows) {
        SCOPED_TRACE(testing::Message() << time.count() << " ns at " << level << " dB");
        microphone.levels = [level = level](double) { return level; };
        dictate(time);
        expectFailure(say::noAudibleSpeech());
        scheduler.advance(1s);
        EXPECT_FALSE(microphone.isCapturing());
    }
    // The shortcut is released while an application that hangs is asked for its field.
    accessibility.hang(accessibility.applicationElement(editor));
    accessibility.hang(accessibility.systemWideElement());
    keyboard.press(f8);
    scheduler.post([this] { keyboard.release(f8); });
    scheduler.advance(5s);
    expectFailure(say::noAudibleSpeech());
    EXPECT_FALSE(microphone.isCapturing());
    EXPECT_TRUE(service.requests.empty());
    EXPECT_TRUE(service.opened.empty());
}

TEST_F(DictationTest, AConnectionIsOpenedOnceWhenSpeechIsHeard) {
    // It is quiet for half a second, but for the click of a key.
    microphone.levels = [](double seconds) {
        return seconds > 0.5 || (seconds > 0.29 && seconds < 0.31) ? -20.0F : -60.0F;
    };
    for (const Duration spoken : {Duration(450ms), Duration(2s)}) {
        model->start();
        scheduler.advance(spoken);
        model->cancel();
        EXPECT_EQ(service.opened.size(), spoken > 1s ? 1U : 0U);
    }
    EXPECT_TRUE(service.requests.empty());
}

TEST_F(DictationTest, ARefusedInsertionLeavesTheTextOnTheClipboard) {
    dictate();
    keyboard.tap(0);  // the user types while the service works
    scheduler.advance(2s);
    expect(Stage::clipboard, say::textCopied());
    EXPECT_TRUE(model->canCopyFromOverlay());
    EXPECT_EQ(pasteboard.text(), "Hello there");
    EXPECT_EQ(history.records().size(), 1u);
    EXPECT_TRUE(poster.posts.empty());
    EXPECT_EQ(corrections.learningStatus(), say::learningNeedsPaste());
    scheduler.advance(12s);
    EXPECT_EQ(overlay, "hidden");

    pasteboard.refusesWrites = true;
    moveCaret();
    dictateToTheEnd();
    expectFailure(say::clipboardUnavailableForCopy());
    pasteboard.refusesWrites = false;
    model->copyTranscript();
    settle();
    expect(Stage::clipboard, say::textCopied());
    EXPECT_EQ(pasteboard.text(), "Hello there");
}

TEST_F(DictationTest, WhatItLacksIsNamed) {
    const std::pair<std::function<void()>, Message> rows[] = {
        {[this] { keyStore.remove().start(); }, say::finishSetup()},
        {[this] {
             keyStore.save("sk-key").start();
             permissions.setMicrophone(MicrophoneAuthorization::denied);
         },
         say::finishSetup()},
        {[this] {
             permissions.setMicrophone(MicrophoneAuthorization::authorized);
             secureField();
         },
         say::selectRegularField()},
        {[this] {
             EXPECT_FALSE(microphone.isCapturing());
             EXPECT_EQ(cues(), 0) << "the field was refused";
             accessibility.unset(field, "AXSubrole");
             microphone.recordFailure = say::microphoneCouldNotStart();
         },
         say::microphoneCouldNotStart()}};
    for (const auto& [prepare, message] : rows) {
        prepare();
        dictate();
        expectFailure(message);
    }
}

TEST_F(DictationTest, TroubleWhileRecordingEndsInItsSentence) {
    const std::pair<std::function<void()>, Message> rows[] = {
        {[this] { microphone.end(CaptureEnd::deviceLost); }, say::recordingStopped()},
        {[this] { microphone.end(CaptureEnd::encodingError); },
         say::recordingStoppedCheckMicrophone()},
        {[this] { permissions.setMicrophone(MicrophoneAuthorization::denied); },
         say::permissionChanged()},
        {[this] { keyboard.disable(); }, say::keyboardInterrupted()},
    };
    for (const auto& [trouble, message] : rows) {
        keyboard.press(f8);
        scheduler.advance(1s);
        trouble();
        scheduler.advance(2s);
        corrections.onLearned({});  // is less urgent than a failure
        expectFailure(message);
        permissions.setMicrophone(MicrophoneAuthorization::authorized);
        keyboard.release(f8);
    }
    workspace.lockScreen();
    expectFailure(say::keyboardInterrupted());  // nothing to cancel
    for (const auto leave : {&FakeWorkspace::sleep, &FakeWorkspace::lockScreen}) {
        keyboard.press(f8);
        scheduler.advance(1s);
        (workspace.*leave)();
        EXPECT_EQ(model->stage(), Stage::idle);
        EXPECT_FALSE(microphone.isCapturing());
        keyboard.release(f8);
    }
}

TEST_F(DictationTest, AFixOfThePastedTextIsLearnedAndShown) {
    const auto newest = [this] { return corrections.rules().rules().front().replacement; };
    const auto pasteAndFix = [this](const char* word, const char* fixed) {
        service.body = std::string(R"({"text":"hello )") + word + "\"}";
        accessibility.set(field, "AXValue", std::string("Dear "));
        accessibility.set(field, "AXSelectedTextRange", Utf16Range{5, 0});
        dictateToTheEnd();
        ASSERT_EQ(lastCode(), "observer.started");
        accessibility.set(field, "AXValue", std::string("Dear Hello ") + fixed);
        keyboard.tap(0);
    };
    pasteAndFix("there", "theer");
    scheduler.advance(3s);
    EXPECT_EQ(newest(), "theer");
    EXPECT_EQ(model->stage(), Stage::learned);
    EXPECT_EQ(overlay, "shown");

    const std::pair<const char*, std::function<void()>> endings[] = {
        {"cancelled", [this] { model->cancel(); }},
        {"learning switched",
         [this] {
             corrections.setLearnsAutomatically(false);
             corrections.setLearnsAutomatically(true);
         }},
        {"shut down", [this] { model->shutdown(); }}};
    for (const auto& [name, end] : endings) {
        SCOPED_TRACE(name);
        pasteAndFix("oxygen", "oxygon");
        scheduler.advance(1s);
        end();
        scheduler.advance(5s);
        EXPECT_EQ(newest(), "theer");
    }
}

}  // namespace
}  // namespace quorvi::test
