#include "tests/dictation/DictationFixture.h"

namespace quorvi::test {
namespace {

using Sample = AppModel::Sample;

constexpr auto sample = "Hello, world. Καλημέρα, κόσμε.";

using InsertionTestTest = DictationTest;

TEST_F(InsertionTestTest, CountsDownAndPastesTheSampleIntoTheFieldThatHasTheFocusThen) {
    model->armInsertionTest();
    expect(Stage::idle, say::testCountdown(10));
    EXPECT_EQ(overlay, "shown");
    const auto other = accessibility.makeText(editor, "");
    keyboard.click();
    accessibility.focus(other);
    scheduler.advance(9900ms);
    expect(Stage::idle, say::testCountdown(1));
    poster.onPost = [&](const auto& post) {
        accessibility.type(other, pasteboard.readBy(post.pid));
    };

    scheduler.advance(2s);
    EXPECT_EQ(accessibility.text(other), sample);
    EXPECT_EQ(fieldText(), "Dear ");
    expect(Stage::success, say::testSampleSent("Editor"));
    EXPECT_EQ(pasteboard.text(), "mine");
    EXPECT_TRUE(history.records().empty());
    EXPECT_EQ(model->lastTranscript(), "");
    scheduler.advance(2s);
    EXPECT_EQ(overlay, "hidden");
}

TEST_F(InsertionTestTest, TheShortcutRunsItAtOnceAndItsReleaseDoesNothing) {
    model->armInsertionTest();
    scheduler.advance(2s);
    keyboard.press(f8);
    scheduler.advance(20ms);
    EXPECT_EQ(model->stage(), Stage::inserting);
    keyboard.release(f8);
    scheduler.advance(12s);
    EXPECT_EQ(fieldText(), std::string("Dear ") + sample) << "once only";
    EXPECT_EQ(microphone.captures, 0);
}

TEST_F(InsertionTestTest, EscapeEndsItAtAnyMoment) {
    for (auto moment : {500ms, 5s + 0ms, 10s + 5ms}) {
        SCOPED_TRACE(moment.count());
        model->armInsertionTest();
        scheduler.advance(moment);
        keyboard.tap(keyCode::escape);
        settle();
        EXPECT_FALSE(model->insertionTestArmed());
        scheduler.advance(12s);
        expect(Stage::idle, say::dictationCancelled());
        EXPECT_EQ(pasteboard.text(), "mine");
    }
}

TEST_F(InsertionTestTest, NamesWhatIsMissing) {
    accessibility.trusted = false;
    model->armInsertionTest();
    expectFailure(say::testNeedsAccessibility());
    accessibility.trusted = true;
    model->armInsertionTest();
    secureField();
    scheduler.advance(11s);
    expectFailure(say::selectRegularField());
    EXPECT_EQ(overlay, "shown");
    EXPECT_FALSE(model->hotkey().cancelEnabled());
}

TEST_F(InsertionTestTest, TriesTheLearningWhereThePasteCanBeReadAndSaysSoWhereItCannot) {
    for (const auto& status : {say::learningIn("Editor"), say::testCouldNotLearn()}) {
        model->armInsertionTest(Sample::learning);
        keyboard.tap(f8);
        scheduler.advance(2s);
        EXPECT_EQ(corrections.learningStatus(), status);
        EXPECT_EQ(fieldText(), "Dear This is a test for oxygen.");
        model->cancel();
        poster.onPost = nullptr;
    }
}

}  // namespace
}  // namespace quorvi::test
