#include <random>

#include "tests/dictation/DictationFixture.h"

namespace quorvi::test {
namespace {

// Drives the model with random commands and events at random turns of the event loop.
class DictationModelTest : public DictationTest {
protected:
    void afterTurns(unsigned turns, std::function<void()> act) {
        if (turns == 0) return act();
        scheduler.post([this, turns, act = std::move(act)] { afterTurns(turns - 1, act); });
    }

    // No capture runs without a recording that the user sees and can end, nor the reverse.
    void check() {
        const bool records = model->stage() == Stage::recording;
        if (!model->isStarting()) {
            EXPECT_EQ(records, microphone.isCapturing());
        }
        if (!isActive(model->stage()) && !model->isStarting()) {
            EXPECT_EQ(recordings.inMemory, model->canRetry() ? 1 : 0);
        }
        if (!records) recordingSince = scheduler.now();
        EXPECT_LE(scheduler.now() - recordingSince, 3min);
        if (records) {
            EXPECT_EQ(overlay, "shown");
        }
        if (records || model->isStarting()) {
            EXPECT_TRUE(model->hotkey().cancelEnabled());
            EXPECT_FALSE(model->insertionTestArmed() || model->isChoosingShortcut());
        }
    }

    const std::vector<std::function<void()>> actions{
        [this] { keyboard.press(f8); },
        [this] { keyboard.release(f8); },
        [this] { keyboard.tap(keyCode::escape); },
        [this] { keyboard.click(); },
        [this] { keyboard.disable(); },
        [this] { model->start(); },
        [this] { model->finish(); },
        [this] { model->toggle(); },
        [this] { model->toggle(); },
        [this] {
            if (model->canCancel()) model->cancel();
        },
        [this] { model->armInsertionTest(); },
        [this] { model->beginShortcutCapture(); },
        [this] { model->endShortcutCapture(); },
        [this] { model->setMode(DictationMode::toggle); },
        [this] { model->setMode(DictationMode::hold); },
        [this] { model->copyTranscript(); },
        [this] { model->resetDictation(); },
        [this] { service.status = service.status == 200 ? 500 : 200; },
        [this] { model->retry(); },
        [this] { model->retry(); },
        [this] { model->discardFailed(); },
        [this] { workspace.sleep(); },
        [this] { workspace.lockScreen(); },
        [this] { microphone.end(CaptureEnd::deviceLost); },
        [this] { microphone.startsAtOnce = !microphone.startsAtOnce; },
        [this] { microphone.isLostAtOnce = !microphone.isLostAtOnce; },
        [this] { permissions.setMicrophone(MicrophoneAuthorization::denied); },
        [this] { permissions.setMicrophone(MicrophoneAuthorization::authorized); },
    };
    TimePoint recordingSince = scheduler.now();
};

TEST_F(DictationModelTest, NoCaptureRunsWithoutAVisibleRecording) {
    const Duration pauses[] = {0ms, 1ms, 1ms, 60ms, 1s, 4s, 100s};
    for (unsigned seed = 1; seed <= 40 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        for (int step = 0; step < 100 && !HasFailure(); ++step) {
            const auto which = random() % actions.size();
            SCOPED_TRACE(which);
            afterTurns(random() % 8, actions[which]);
            if (random() % 3 == 0) continue;  // the next one meets it under way
            scheduler.advance(pauses[random() % std::size(pauses)]);
            scheduler.advance(1ms);
            check();
        }
    }
    keyboard.contradictions.clear();  // a reset forgets a press whose release is still swallowed
}

TEST_F(DictationModelTest, WhatIsSaidWhileTheFieldIsCapturedIsKept) {
    HeldExecutor queries;
    model.reset();
    model = std::make_unique<AppModel>(environment(
        scheduler, executor, history, corrections, [this]() -> SyncControl& { return sync; },
        nullptr, &queries));
    settle();
    dictate();
    EXPECT_EQ(model->stage(), Stage::idle);
    EXPECT_FALSE(microphone.isCapturing());
    queries.release();
    scheduler.advance(3s);
    expect(Stage::success, say::pasteSent("Editor"));
    EXPECT_NEAR(history.records()[0].audioSeconds, 1, 0.01);
    model->shutdown();
    scheduler.advance(5s);
    model.reset();
}

TEST_F(DictationModelTest, ADeviceLostBeforeTheStageIsRecordingEndsTheDictation) {
    microphone.isLostAtOnce = true;
    model->start();
    settle();
    expectFailure(say::recordingStopped());
    check();
}

TEST_F(DictationModelTest, ACommandMeansWhatTheShortcutWouldMean) {
    const KeyCode bound = 0;  // the desktop runs `quorvi toggle` for it, again at each repeat
    const auto hold = [&] {
        for (int repeat = 0; repeat < 20; ++repeat) {
            keyboard.press(bound);
            model->toggle();
            scheduler.advance(40ms);
        }
        keyboard.release(bound);
    };
    hold();
    EXPECT_EQ(model->stage(), Stage::recording);
    hold();
    scheduler.advance(2s);
    expect(Stage::success, say::pasteSent("Editor"));

    model->armInsertionTest();
    model->start();
    EXPECT_EQ(model->stage(), Stage::inserting) << "the test runs";
    scheduler.advance(2s);
    model->beginShortcutCapture();
    model->toggle();
    settle();
    EXPECT_EQ(microphone.captures, 1);
}

TEST_F(DictationModelTest, ADictationThatIsStartingCanBeCancelled) {
    microphone.startsAtOnce = false;
    for (const auto& cancel : {std::function<void()>([this] { keyboard.tap(keyCode::escape); }),
                               std::function<void()>([this] {
                                   if (model->canCancel()) model->cancel();
                               })}) {
        model->start();
        scheduler.advance(1s);
        cancel();
        settle();
        expect(Stage::idle, say::dictationCancelled());
        EXPECT_FALSE(model->isStarting());
    }
}

}  // namespace
}  // namespace quorvi::test
