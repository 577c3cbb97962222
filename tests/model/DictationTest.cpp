#include "tests/model/DictationFixture.h"

namespace quorvi::test {
namespace {

TEST_F(DictationTest, RunsFromTheShortcutToTheInsertedText) {
    keyboard.press(f8);
    settle();
    EXPECT_EQ(model->stage(), Stage::recording);
    EXPECT_EQ(model->message(), "Dictating into Editor");
    EXPECT_EQ(overlay, "shown");
    EXPECT_EQ(cues(), 1);
    EXPECT_EQ(service.opened.size(), 1u) << "opened while the user speaks";
    scheduler.advance(1s);
    EXPECT_NEAR(model->elapsed(), 1, 0.06);
    EXPECT_NEAR(model->level(), 0.7, 0.001);
    keyboard.release(f8);
    settle();
    EXPECT_EQ(model->stage(), Stage::transcribing);
    EXPECT_EQ(model->message(), "Converting speech to text…");
    EXPECT_EQ(cues(), 2);
    EXPECT_EQ(recordingsLeft(), 0);

    scheduler.advance(500ms);
    EXPECT_EQ(model->stage(), Stage::inserting);
    EXPECT_EQ(accessibility.text(field), "Dear Hello there");
    ASSERT_EQ(history.records().size(), 1u);
    EXPECT_EQ(history.records()[0].text, "Hello there");
    EXPECT_EQ(history.records()[0].appName, "Editor");
    EXPECT_EQ(history.records()[0].language, "automatic");
    EXPECT_EQ(history.records()[0].costEstimate->modelID, "gpt-transcribe");
    EXPECT_NEAR(history.records()[0].audioSeconds, 1, 0.01);

    scheduler.advance(1s);
    EXPECT_EQ(model->stage(), Stage::success);
    EXPECT_EQ(model->message(), "Paste sent to Editor.");
    EXPECT_EQ(pasteboard.text(), "mine");
    EXPECT_EQ(learningCodes().back(), "observer.started");
    EXPECT_FALSE(model->hotkey().cancelEnabled());
    scheduler.advance(2s);
    EXPECT_EQ(overlay, "hidden");
    EXPECT_EQ(model->stage(), Stage::success) << "the stage stays";
}

TEST_F(DictationTest, TheStartCueItselfIsNotTakenForSpeech) {
    // Loud while the cue sounds, silent afterwards.
    microphone.levels = ([](double seconds) { return seconds < 0.18 ? -10.0F : -70.0F; });
    dictate(600ms);
    EXPECT_EQ(model->stage(), Stage::failure);
    model->setSoundStyle(RecordingCue::start, RecordingSoundStyle::silent);
    dictate(600ms);
    EXPECT_EQ(model->stage(), Stage::transcribing);
    model->cancel();
    model->setSoundStyle(RecordingCue::start, RecordingSoundStyle::soft);
    model->setSoundCuesEnabled(false);
    dictate(600ms);
    EXPECT_EQ(model->stage(), Stage::transcribing);
}

TEST_F(DictationTest, FinishesByItselfAfterThreeMinutes) {
    model->setMode(DictationMode::toggle);
    keyboard.tap(f8);
    scheduler.advance(179s);
    EXPECT_EQ(model->stage(), Stage::recording);
    scheduler.advance(1100ms);
    EXPECT_EQ(model->stage(), Stage::transcribing);
}

TEST_F(DictationTest, TheShortcutDoesNothingWhileWorking) {
    for (auto mode : allDictationModes) {
        model->setMode(mode);
        model->start();
        scheduler.advance(1s);
        model->finish();
        settle();
        keyboard.tap(f8);
        settle();
        EXPECT_EQ(model->stage(), Stage::transcribing);
        scheduler.advance(600ms);
        keyboard.tap(f8);
        settle();
        EXPECT_EQ(model->stage(), Stage::inserting);
        scheduler.advance(2s);
        EXPECT_EQ(microphone.captures, mode == DictationMode::hold ? 1 : 2);
        moveCaret();
    }
}

TEST_F(DictationTest, EscapeAtAnyMomentLeavesNothingBehind) {
    for (auto moment : {200ms, 1050ms, 1300ms, 1700ms, 2200ms}) {
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
        EXPECT_EQ(model->stage(), Stage::idle) << moment.count();
        EXPECT_EQ(model->message(), "Cancelled. Ready for your next dictation.");
        EXPECT_EQ(overlay, "hidden");
        EXPECT_FALSE(microphone.isCapturing());
        scheduler.advance(10s);
        EXPECT_EQ(model->stage(), Stage::idle) << "a late result changed it";
        EXPECT_EQ(pasteboard.text(), "mine");
        EXPECT_EQ(recordingsLeft(), 0);
        EXPECT_EQ(history.records().size(), saved + (moment > 1500ms ? 1 : 0))
            << "words that were recognised are kept, " << moment.count();
        moveCaret();
    }
}

TEST_F(DictationTest, AnAnswerThatArrivesAfterACancelIsDropped) {
    service.deaf = true;
    dictate();
    model->cancel();
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::idle);
    EXPECT_TRUE(history.records().empty());

    service.status = 401;
    dictate();
    model->cancel();
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::idle) << "nor does a late error show";
    service.status = 200;
    dictate();
    model->cancel();
    service.body = R"({"text":"second"})";
    dictate();
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::success) << "a dictation started meanwhile is its own";
    ASSERT_EQ(history.records().size(), 1u);
    EXPECT_EQ(history.records()[0].text, "second");
}

TEST_F(DictationTest, AnUnverifiedPasteIsSentAndSaysThatLearningCannotFollow) {
    poster.onPost = nullptr;
    dictate();
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::success);
    EXPECT_EQ(corrections.learningStatus(),
              "Could not verify readable text in Editor. Use Remember correction for this "
              "dictation.");
    EXPECT_NE(learningCodes().back(), "observer.started") << "no watch without a verified paste";
}

TEST_F(DictationTest, ALearnedCorrectionIsShownUnlessSomethingMoreUrgentIs) {
    const TextCorrection rule{.id = newUuid(), .original = "oxygen", .replacement = "oxygon"};
    corrections.onLearned(rule);
    EXPECT_EQ(model->stage(), Stage::learned);
    EXPECT_EQ(model->message(), "oxygen → oxygon");
    keyboard.press(f8);
    settle();
    corrections.onLearned(rule);
    EXPECT_EQ(model->stage(), Stage::recording);
    keyboard.release(f8);
    settle();
    corrections.onLearned(rule);
    EXPECT_EQ(model->stage(), Stage::failure);
}

// What the user does after the paste, and how the watch then ends.
TEST_F(DictationTest, AFixOfThePastedTextIsLearnedAndShown) {
    const auto paste = [this] {
        accessibility.set(field, "AXValue", std::string("Dear "));
        accessibility.set(field, "AXSelectedTextRange", Utf16Range{5, 0});
        dictate();
        scheduler.advance(2s);
        ASSERT_EQ(learningCodes().back(), "observer.started");
    };
    const auto fix = [this](std::string text) {
        accessibility.set(field, "AXValue", std::move(text));
        keyboard.tap(0);
    };
    const auto newest = [this] { return corrections.rules().rules().front().replacement; };
    paste();
    fix("Dear Hello theer");
    scheduler.advance(3s);
    EXPECT_EQ(newest(), "theer");
    EXPECT_EQ(model->stage(), Stage::learned);
    EXPECT_EQ(model->message(), "there → theer");
    EXPECT_EQ(overlay, "shown");

    // The next dictation takes a last look; nothing is shown over it.
    service.body = R"({"text":"hello wherever"})";
    paste();
    fix("Dear Hello whereever");
    bool wasShown = false;
    const auto changes =
        model->onChange([&] { wasShown = wasShown || model->message() == "wherever → whereever"; });
    keyboard.press(f8);
    settle();
    EXPECT_FALSE(wasShown);
    EXPECT_EQ(newest(), "whereever");
    EXPECT_EQ(model->stage(), Stage::recording);
    keyboard.release(f8);
    model->cancel();

    const std::pair<const char*, std::function<void()>> endings[] = {
        {"cancelled", [this] { model->cancel(); }},
        {"learning switched", [this] { corrections.setLearnsAutomatically(true); }},
        {"shut down", [this] { model->shutdown(); }}};
    service.body = R"({"text":"hello oxygen"})";
    for (const auto& [name, end] : endings) {
        SCOPED_TRACE(name);
        paste();
        fix("Dear Hello oxygon");
        scheduler.advance(1s);
        end();
        scheduler.advance(5s);
        EXPECT_EQ(newest(), "whereever");
    }
}

TEST_F(DictationTest, PreferencesAreKeptAndBrokenOnesFallBack) {
    model->setMode(DictationMode::toggle);
    model->setTranscriptionModel(TranscriptionModel::mini);
    model->setSoundCuesEnabled(false);
    makeModel();
    EXPECT_EQ(model->mode(), DictationMode::toggle);
    EXPECT_EQ(model->transcriptionModel(), TranscriptionModel::mini);
    EXPECT_FALSE(model->soundCuesEnabled());

    preferences.setString("mode", "shout");
    preferences.setString("model", "GPT-TRANSCRIBE");
    preferences.setString("soundCuesEnabled", "yes");
    preferences.setString("language", "greek");
    makeModel();
    EXPECT_EQ(model->mode(), DictationMode::hold);
    EXPECT_EQ(model->transcriptionModel(), TranscriptionModel::transcribe);
    EXPECT_TRUE(model->soundCuesEnabled());
    EXPECT_FALSE(preferences.contains("language"));
}

}  // namespace
}  // namespace quorvi::test
