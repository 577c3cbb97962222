#include <map>

#include "tests/dictation/DictationFixture.h"
#include "tests/fakes/FakeServiceProgram.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

// The controller with the user's choice of a service; `keyring` has the keys of other services.
class ServiceChoiceTest : public DictationTest {
protected:
    ServiceChoiceTest() {
        model.reset();
        auto parts = environment(scheduler, executor, history, corrections,
                                 [this]() -> SyncControl& { return sync; });
        parts.service.clear();
        parts.otherKeys = [this](const std::string& address) {
            auto store = std::make_unique<MemoryKeyStore>();
            if (keyring.contains(address)) store->save(keyring[address]).start();
            return store;
        };
        parts.offlineProgram = &program;
        model = std::make_unique<AppModel>(std::move(parts));
        model->setShortcut(Hotkey::f8);
        settle();
    }
    SpeechServiceChoice& choice() { return model->speechService().choice(); }
    // Where a dictation went, and with which key.
    std::string sent() {
        const auto before = service.requests.size();
        moveCaret();
        dictateToTheEnd();
        if (service.requests.size() == before) return model->message().english();
        const auto& request = service.requests.back();
        return request.url.substr(0, request.url.find("/v1")) + " " +
               (request.headers.size() == 2 ? request.headers[0].second : "without a key");
    }
    std::string sentModel() {
        const std::string body(textOf(service.requests.back().body));
        const auto at = body.find("name=\"model\"\r\n\r\n") + 16;
        return body.substr(at, body.find('\r', at) - at);
    }
    DictationCostEstimate lastPrice() { return *history.records()[0].costEstimate; }

    std::map<std::string, std::string> keyring{{"https://one.example", "sk-one"}};
    FakeServiceProgram program{scheduler};
};

TEST_F(ServiceChoiceTest, EachServiceIsSentItsOwnKeyAndNoOtherFromTheNextDictationOn) {
    EXPECT_EQ(sent(), "https://api.openai.com Bearer sk-key");
    EXPECT_TRUE(lastPrice().isKnown());
    choice().choose(SpeechServiceKind::other);
    EXPECT_FALSE(model->ready());
    EXPECT_EQ(sent(), say::finishSetup().english());
    choice().setOtherAddress(" https://one.example ");
    choice().setOtherModel("large");
    EXPECT_EQ(sent(), "https://one.example Bearer sk-one");
    EXPECT_EQ(sentModel(), "large");
    EXPECT_EQ(lastPrice(), DictationCostEstimate::none("large"));
    choice().setOtherAddress("https://two.example");
    EXPECT_EQ(sent(), say::finishSetup().english()) << "it has no key";
    choice().setOtherTakesKey(false);
    EXPECT_EQ(sent(), "https://two.example without a key");
    for (const auto* bad : {"http://two.example", "two"}) {
        choice().setOtherAddress(bad);
        EXPECT_EQ(sent(), say::finishSetup().english()) << bad;
    }
    choice().choose(SpeechServiceKind::openAI);
    EXPECT_EQ(sent(), "https://api.openai.com Bearer sk-key");
    EXPECT_EQ(sentModel(), "gpt-transcribe");
}

TEST_F(ServiceChoiceTest, AnAddressStoredByAnEarlierVersionCounts) {
    choice().setOtherAddress("https://one.example");
    EXPECT_EQ(sent(), "https://one.example Bearer sk-one");
    choice().choose(SpeechServiceKind::openAI);
    EXPECT_EQ(sent(), "https://api.openai.com Bearer sk-key");
}

TEST_F(ServiceChoiceTest, TheOfflineProgramRunsWhileItIsUsedAndStartsAgainAfterACrash) {
    const Running<void> removing(model->removeKey());
    choice().choose(SpeechServiceKind::offline);
    EXPECT_TRUE(model->ready()) << "it needs no key";
    EXPECT_FALSE(program.isRunning());
    EXPECT_EQ(sent(), "http://127.0.0.1:7 Bearer token");
    EXPECT_EQ(lastPrice(), DictationCostEstimate::none("offline"));
    EXPECT_EQ(sent(), "http://127.0.0.1:7 Bearer token");
    EXPECT_EQ(program.starts, 1);
    program.crash();
    scheduler.advance(2s);
    EXPECT_EQ(program.starts, 2);
    scheduler.advance(OfflineRecogniser::idleLimit);
    EXPECT_FALSE(program.isRunning());

    program.fails = true;
    program.starts = 0;
    EXPECT_EQ(sent(), say::convertingSpeech().english()) << "it may still come up";
    scheduler.advance(OfflineRecogniser::startLimit);
    expectFailure(say::offlineNotServing().followedBy(say::tryAgainMinutes(10)));
    EXPECT_GT(program.starts, 2);
    EXPECT_LT(program.starts, 8) << "later each time";
    scheduler.advance(OfflineRecogniser::idleLimit);
    program.fails = false;
    program.installed = false;
    EXPECT_EQ(sent(), say::finishSetup().english());
}

TEST_F(ServiceChoiceTest, ATestIsPassedByAnAnswerEvenIfNothingWasHeard) {
    const auto outcome = [this] {
        const Running<void> testing(model->testSpeechService({}));
        scheduler.advance(1s);
        return testing.failure().empty() ? std::string("passed") : testing.failure();
    };
    EXPECT_EQ(outcome(), "passed");
    EXPECT_GT(service.requests[0].body.size(), 1000) << "a recording is sent";
    service.body = R"({"text":" "})";
    EXPECT_EQ(outcome(), "passed");
    service.status = 401;
    EXPECT_EQ(outcome(), say::apiKeyRejected().english());
}

}  // namespace
}  // namespace quorvi::test
