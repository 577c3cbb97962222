#include "tests/dictation/DictationFixture.h"

namespace quorvi::test {
namespace {

using Sample = AppModel::Sample;

constexpr auto sample = "Hello, world. Καλημέρα, κόσμε.";

class InsertionTestTest : public DictationTest {
protected:
    // The messages that are published in that time.
    std::vector<Message> messagesOfTheNext(Duration time) {
        std::vector<Message> seen;
        const auto watching = model->onChange([&] {
            if (seen.empty() || seen.back() != model->message()) seen.push_back(model->message());
        });
        scheduler.advance(time);
        return seen;
    }
};

TEST_F(InsertionTestTest, CountsDownAndPastesTheSampleIntoTheFieldThatHasTheFocusThen) {
    model->armInsertionTest();
    expect(Stage::idle, say::testCountdown(10));
    EXPECT_EQ(overlay, "shown");
    const auto other = accessibility.makeText(editor, "");
    keyboard.click();
    accessibility.focus(other);
    auto seen = messagesOfTheNext(9900ms);
    ASSERT_EQ(seen.size(), 9u);
    EXPECT_EQ(seen.back(), say::testCountdown(1));
    poster.onPost = [&](const auto&) { accessibility.type(other, pasteboard.text()); };

    seen = messagesOfTheNext(2s);
    EXPECT_EQ(accessibility.text(other), sample);
    EXPECT_EQ(fieldText(), "Dear ");
    EXPECT_EQ(seen, (std::vector<Message>{say::testCountdown(1), say::testPasting("Editor"),
                                          say::testSampleSent("Editor")}));
    EXPECT_EQ(model->stage(), Stage::success);
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

// By a command instead of the shortcut, for example.
TEST_F(InsertionTestTest, ADictationThatIsStartedMeanwhileEndsIt) {
    model->armInsertionTest();
    scheduler.advance(2s);
    model->start();
    scheduler.advance(12s);
    EXPECT_FALSE(model->insertionTestArmed());
    expect(Stage::recording, say::dictatingInto("Editor"));
    EXPECT_EQ(fieldText(), "Dear ");
    model->cancel();
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
    const auto statusAfterTest = [this] {
        model->armInsertionTest(Sample::learning);
        keyboard.tap(f8);
        scheduler.advance(2s);
        return corrections.learningStatus();
    };
    EXPECT_EQ(statusAfterTest(), say::learningIn("Editor"));
    EXPECT_EQ(fieldText(), "Dear This is a test for oxygen.");
    model->cancel();
    poster.onPost = nullptr;
    moveCaret();
    EXPECT_EQ(statusAfterTest(), say::testCouldNotLearn());
    EXPECT_EQ(model->stage(), Stage::success);
}

}  // namespace
}  // namespace quorvi::test
