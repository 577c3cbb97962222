#include "tests/dictation/DictationFixture.h"

namespace quorvi::test {
namespace {

class InsertionTest : public DictationTest {
protected:
    // The countdown's own words, one a second.
    std::vector<std::string> messagesOfTheNext(Duration time) {
        std::vector<std::string> seen;
        const auto watching = model->onChange([&] {
            if (seen.empty() || seen.back() != model->message()) seen.push_back(model->message());
        });
        scheduler.advance(time);
        return seen;
    }
};

TEST_F(InsertionTest, CountsDownAndPastesTheSampleIntoTheFieldThatHasTheFocusThen) {
    model->armInsertionTest();
    EXPECT_EQ(model->message(),
              "Click a text field in another app. Sample in 10 seconds. Esc cancels.");
    EXPECT_EQ(overlay, "shown");
    const auto other = accessibility.makeText(editor, "");
    keyboard.click();
    accessibility.focus(other);
    auto seen = messagesOfTheNext(9900ms);
    ASSERT_EQ(seen.size(), 9u);
    EXPECT_EQ(seen.back(), "Click a text field in another app. Sample in 1 seconds. Esc cancels.");
    poster.onPost = [&](const auto&) { accessibility.type(other, pasteboard.text()); };

    seen = messagesOfTheNext(2s);
    EXPECT_EQ(accessibility.text(other), "Hello, world. Καλημέρα, κόσμε.");
    EXPECT_EQ(accessibility.text(field), "Dear ");
    EXPECT_EQ(seen, (std::vector<std::string>{seen.front(), "Testing Paste in Editor…",
                                              "Sample sent to Editor."}));
    EXPECT_EQ(model->stage(), Stage::success);
    EXPECT_EQ(pasteboard.text(), "mine");
    EXPECT_TRUE(history.records().empty());
    EXPECT_EQ(model->lastTranscript(), "");
    scheduler.advance(2s);
    EXPECT_EQ(overlay, "hidden");
}

TEST_F(InsertionTest, TheShortcutRunsItAtOnceAndItsReleaseDoesNothing) {
    for (auto mode : allDictationModes) {
        model->setMode(mode);
        moveCaret();
        const auto before = accessibility.text(field);
        model->armInsertionTest();
        scheduler.advance(2s);
        keyboard.press(f8);
        scheduler.advance(20ms);
        EXPECT_EQ(model->stage(), Stage::inserting);
        keyboard.release(f8);
        scheduler.advance(2s);
        EXPECT_EQ(model->stage(), Stage::success) << model->message();
        EXPECT_EQ(accessibility.text(field), "Hello, world. Καλημέρα, κόσμε." + before);
        scheduler.advance(10s);
        EXPECT_EQ(accessibility.text(field), "Hello, world. Καλημέρα, κόσμε." + before)
            << "the countdown went on";
    }
    EXPECT_EQ(microphone.captures, 0);
}

TEST_F(InsertionTest, EscapeEndsItAtAnyMoment) {
    for (auto moment : {500ms, 5s + 0ms, 10s + 5ms}) {
        model->armInsertionTest();
        scheduler.advance(moment);
        keyboard.tap(keyCode::escape);
        settle();
        EXPECT_EQ(model->stage(), Stage::idle);
        EXPECT_EQ(model->message(), "Cancelled. Ready for your next dictation.");
        EXPECT_FALSE(model->insertionTestArmed());
        scheduler.advance(12s);
        EXPECT_EQ(model->stage(), Stage::idle) << moment.count();
        EXPECT_EQ(pasteboard.text(), "mine");
    }
    keyboard.press(f8);
    settle();
    EXPECT_EQ(model->stage(), Stage::recording) << "the next press dictates again";
    model->armInsertionTest();
    EXPECT_FALSE(model->insertionTestArmed());
    model->cancel();
}

TEST_F(InsertionTest, SaysWhatIsMissing) {
    accessibility.trusted = false;
    model->armInsertionTest();
    EXPECT_EQ(model->stage(), Stage::failure);
    EXPECT_EQ(model->message(), "Enable Accessibility in Settings to test text insertion.");
    accessibility.trusted = true;

    model->armInsertionTest();
    accessibility.set(field, "AXSubrole", std::string("AXSecureTextField"));
    scheduler.advance(11s);
    EXPECT_EQ(model->stage(), Stage::failure);
    EXPECT_EQ(model->message(), "Select a regular text field to dictate.");
    EXPECT_EQ(overlay, "shown");
    EXPECT_FALSE(model->hotkey().cancelEnabled());
}

TEST_F(InsertionTest, TriesTheLearningWhereThePasteCanBeReadAndSaysSoWhereItCannot) {
    model->armInsertionTest(true);
    keyboard.tap(f8);
    scheduler.advance(2s);
    EXPECT_EQ(accessibility.text(field), "Dear This is a test for oxygen.");
    EXPECT_EQ(corrections.learningStatus(),
              "Learning in Editor. Correct a spelling, then pause for two seconds.");
    model->cancel();

    poster.onPost = nullptr;
    moveCaret();
    model->armInsertionTest(true);
    keyboard.tap(f8);
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::success);
    EXPECT_EQ(corrections.learningStatus(),
              "The test pasted, but automatic learning could not attach to this editor.");
}

class ShortcutCapture : public DictationTest {
protected:
    void begin() {
        model->beginShortcutCapture();
        EXPECT_TRUE(model->isChoosingShortcut());
        EXPECT_TRUE(model->hotkey().suspended());
    }
    void expectEnded(const Hotkey& shortcut) {
        EXPECT_FALSE(model->isChoosingShortcut());
        EXPECT_FALSE(model->hotkey().suspended());
        EXPECT_FALSE(localKeys.isObserved());
        EXPECT_EQ(model->shortcut(), shortcut);
    }
};

TEST_F(ShortcutCapture, TakesTheNextSuitableKeyAndStoresIt) {
    begin();
    keyboard.press(f8);
    settle();
    EXPECT_EQ(model->stage(), Stage::idle) << "the present shortcut dictates nothing meanwhile";
    keyboard.release(f8);
    EXPECT_TRUE(localKeys.press(0, modifierFlag::shift, "a"));
    EXPECT_EQ(model->message(),
              "Use Left or Right Control, Right Option, a function key, or a shortcut with ⌘, ⌃ or "
              "⌥.");
    EXPECT_TRUE(model->isChoosingShortcut());
    EXPECT_TRUE(localKeys.press(96, 0, "F5"));
    expectEnded({96, 0, "F5"});

    begin();
    using namespace modifierFlag;
    EXPECT_FALSE(localKeys.changeFlags(keyCode::rightOption, option | modifierFlag::rightOption));
    EXPECT_TRUE(localKeys.changeFlags(keyCode::rightOption, 0));
    expectEnded(Hotkey::rightOption);
    makeModel();
    EXPECT_EQ(model->hotkey().suspended(), false);
}

TEST_F(ShortcutCapture, EndsWithoutAChangeByEscapeResetAndQuitting) {
    begin();
    EXPECT_TRUE(localKeys.press(keyCode::escape, 0, "Esc"));
    expectEnded(Hotkey::f8);
    begin();
    model->resetDictation();
    expectEnded(Hotkey::f8);
    begin();
    model->shutdown();
    expectEnded(Hotkey::f8);
}

TEST_F(ShortcutCapture, DoesNotBeginDuringADictationAndEndsATest) {
    keyboard.press(f8);
    settle();
    model->beginShortcutCapture();
    EXPECT_FALSE(model->isChoosingShortcut());
    model->cancel();
    keyboard.release(f8);
    settle();
    model->armInsertionTest();
    begin();
    EXPECT_FALSE(model->insertionTestArmed());
    model->endShortcutCapture();
}

}  // namespace
}  // namespace quorvi::test
