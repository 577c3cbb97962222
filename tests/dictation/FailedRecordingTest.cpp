#include "tests/dictation/DictationFixture.h"

namespace quorvi::test {
namespace {

// A dictation that the speech service fails.
class FailedRecordingTest : public DictationTest {
protected:
    void fail(int status = 500) {
        service.status = status;
        service.failure.reset();
        dictateToTheEnd();
        EXPECT_EQ(model->stage(), Stage::failure);
    }
    void succeedAgain() {
        service.status = 200;
        service.failure.reset();
        model->retry();
        scheduler.advance(2s);
    }
};

TEST_F(FailedRecordingTest, CanBeSentAgainAndGoesTheWholeWay) {
    const struct {
        int status;
        Message problem;
        std::optional<Message> failure = {};
        std::string body = {};
    } failures[] = {
        {0, say::requestFailed("no route"), say::requestFailed("no route")},
        {0, say::serviceNoResponse()},
        {401, say::apiKeyRejected()},
        {408, say::transcriptionFailed(408)},
        {429, say::rateLimited()},
        {503, say::serviceUnavailable()},
        {200, say::serviceUnreadable(), {}, "<html>"},
    };
    std::string text = fieldText();
    for (const auto& one : failures) {
        const auto answer = service.body;
        service.status = one.status;
        service.failure = one.failure;
        if (!one.body.empty()) service.body = one.body;
        dictate();
        const auto spoken = scheduler.date();
        scheduler.advance(2s);
        service.body = answer;
        expectFailure(one.problem.followedBy(say::tryAgainMinutes(10)));
        EXPECT_TRUE(model->canRetryFromOverlay());
        scheduler.advance(100s);
        expectFailure(one.problem.followedBy(say::tryAgainMinutes(9)));
        keyboard.tap(keyCode::escape);  // no typing since the user asked for another try
        const auto sent = service.requests.back().body.size();
        succeedAgain();
        EXPECT_EQ(service.requests.back().body.size(), sent);
        expect(Stage::success, say::pasteSent("Editor"));
        text += "Hello there";
        EXPECT_EQ(fieldText(), text);
        EXPECT_NEAR(history.records()[0].date.secondsSinceReferenceDate,
                    spoken.secondsSinceReferenceDate, 0.1);
        EXPECT_NEAR(history.records()[0].audioSeconds, 1, 0.01);
        EXPECT_EQ(recordings.inMemory, 0);
        EXPECT_FALSE(model->canRetry());
    }
}

TEST_F(FailedRecordingTest, StaysUntilItSucceedsAndIsTheOnlyOne) {
    fail(500);
    service.status = 429;
    model->retry();
    scheduler.advance(2s);
    expectFailure(say::rateLimited().followedBy(say::tryAgainMinutes(10)));
    model->retry();
    keyboard.tap(keyCode::escape);
    settle();
    expect(Stage::idle, say::dictationCancelled());
    EXPECT_TRUE(model->canRetry());
    dictate(200ms);  // too short to be sent
    EXPECT_TRUE(model->canRetry());
    fail(500);
    EXPECT_EQ(recordings.inMemory, 1);
    service.status = 413;
    model->retry();
    scheduler.advance(2s);
    expectFailure(say::recordingTooLarge());
    EXPECT_EQ(recordings.inMemory, 0);
    model->retry();
    EXPECT_EQ(model->message(), say::nothingToTryAgain());
}

TEST_F(FailedRecordingTest, IsSentOnceByItselfWhenTheNetworkReturns) {
    const auto loseNetwork = [&] {
        service.failure = say::requestFailed("no route");
        dictateToTheEnd();
        service.failure.reset();
    };
    loseNetwork();
    network.comeBack();
    scheduler.advance(2s);
    expect(Stage::success, say::pasteSent("Editor"));
    loseNetwork();
    keyboard.tap(keyCode::escape);  // the user may be elsewhere by now
    service.failure = say::requestFailed("no route");
    for (int i = 0; i < 2; ++i) {
        network.comeBack();
        scheduler.advance(2s);
    }
    service.failure.reset();
    EXPECT_EQ(service.requests.size(), 4u);
    loseNetwork();
    keyboard.tap(keyCode::escape);
    network.comeBack();
    scheduler.advance(2s);
    expect(Stage::clipboard, say::textCopied());
    loseNetwork();
    scheduler.advance(3min);
    network.comeBack();
    scheduler.advance(2s);
    fail(500);
    network.comeBack();
    scheduler.advance(2s);
    EXPECT_EQ(service.requests.size(), 8u);
}

TEST_F(FailedRecordingTest, GoesToTheClipboardWhenTheFieldIsAnother) {
    fail();
    moveCaret();
    succeedAgain();
    expect(Stage::clipboard, say::textCopied());
    EXPECT_EQ(pasteboard.text(), "Hello there");
    EXPECT_EQ(history.records().size(), 1u);
}

TEST_F(FailedRecordingTest, IsGoneWhenItsTimeOrTheUserSaysSo) {
    const std::function<void()> ends[] = {
        [this] { scheduler.advance(10min); },
        [this] { model->discardFailed(); },
        [this] { workspace.lockScreen(); },
        [this] { workspace.sleep(); },
        [this] { model->settings().set(setting::keepFailedRecording, false); },
        [this] {
            service.status = 200;
            dictateToTheEnd();
        }};
    for (const auto& end : ends) {
        model->settings().set(setting::keepFailedRecording, true);
        fail();
        EXPECT_EQ(recordings.inMemory, 1);
        end();
        settle();
        EXPECT_EQ(recordings.inMemory, 0);
        EXPECT_FALSE(model->canRetry() || model->canRetryFromOverlay());
    }
    model->settings().set(setting::keepFailedRecording, false);
    fail();
    expectFailure(say::serviceUnavailable());
    model->settings().set(setting::keepFailedRecording, true);
    fail(413);
    expectFailure(say::recordingTooLarge());
    service.status = 200;
    service.body = R"({"text":" "})";
    dictateToTheEnd();
    expectFailure(say::noSpeechRecognized());
    EXPECT_EQ(recordings.inMemory, 0);
}

}  // namespace
}  // namespace quorvi::test
