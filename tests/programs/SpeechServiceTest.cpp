#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/curl/CurlTransport.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/transcription/TranscriptionClient.h"
#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"
#include "tests/support/sound/SpeechSamples.h"

namespace quorvi::test {
namespace {

const std::string program = builtProgram("quorvi-speech-service");
const TranscriptionOptions options{DictationLanguage::automatic, TranscriptionModel::fourO, "x"};
const std::vector<std::string> sentences{"the weather is nice today", "I will see you tomorrow",
                                         "please call me back later", "we need more time",
                                         "I want to go home",         "one two three four five",
                                         "she is a teacher",          "the meeting is on monday"};

std::string lowerCased(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return std::tolower(c); });
    return s;
}

std::string sentenceLines() {
    std::string lines;
    for (const auto& sentence : sentences) lines += sentence + "\n";
    return lines;
}

// The service, and the client that the application uses.
class SpeechServiceTest : public testing::Test {
protected:
    void start(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), program);
        service = std::make_unique<Process>(arguments);
        const std::string announcement = "listening on ";
        const auto line = service->readLine();
        ASSERT_EQ(line.substr(0, announcement.size()), announcement);
        address = serviceAddress(line.substr(announcement.size()));
        client = std::make_unique<TranscriptionClient>(transport, address);
    }
    // Sentences that are known to the service are told apart in a moment.
    void startWithSentences(const std::vector<std::string>& more = {}) {
        std::vector<std::string> arguments{"--sentences", known};
        arguments.insert(arguments.end(), more.begin(), more.end());
        start(arguments);
    }

    // The text, or the sentence of the failure.
    std::string transcribe(Bytes audio, const std::string& key = "sk-test") {
        Running<std::string> running(client->transcribe(std::move(audio), key, options, {}));
        EXPECT_TRUE(await(scheduler, running));
        return running.value().value_or(running.failure());
    }
    int statusOf(HttpRequest request) {
        Running<HttpResponse> running(transport.send(std::move(request), {}));
        EXPECT_TRUE(await(scheduler, running));
        EXPECT_TRUE(running.value()) << running.failure();
        return running.value() ? running.value()->status : -1;
    }
    HttpRequest requestTo(const std::string& method, const std::string& path) {
        return {.method = method, .url = address + path, .headers = {}, .body = {}};
    }

    LoopScheduler scheduler;
    CurlTransport transport{scheduler};
    TestFolder folder;
    std::string known = folder.write("sentences", sentenceLines());
    std::unique_ptr<Process> service;
    std::string address;
    std::unique_ptr<TranscriptionClient> client;
};

TEST_F(SpeechServiceTest, FreeSpeechComesBackAsItsWordsAndKnownSentencesExactlyAlsoAtOnce) {
    start({});
    client->openConnection();
    EXPECT_EQ(transcribe(m4aOf(spoken(sentences[2]))), sentences[2]);

    startWithSentences();
    std::vector<std::unique_ptr<Running<std::string>>> all;
    for (const auto& sentence : sentences) {
        auto task = client->transcribe(m4aOf(spoken(sentence)), "sk-test", options, {});
        all.push_back(std::make_unique<Running<std::string>>(std::move(task)));
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        ASSERT_TRUE(await(scheduler, *all[i]));
        EXPECT_EQ(all[i]->value(), lowerCased(sentences[i])) << all[i]->failure();
    }
}

TEST_F(SpeechServiceTest, LongRecordingIsRecognisedPieceByPieceAndPunctuated) {
    const auto grammar = folder.write("grammar",
                                      "#JSGF V1.0;\ngrammar g;\npublic <g> = (i want to go home | "
                                      "we need more time | she is a teacher)+;\n");
    start({"--grammar", grammar, "--punctuate"});
    Sound sound;
    std::string expected = "I want to go home";
    for (int i = 0; i < 10; ++i) {
        const auto part = spoken(i == 0  ? "I want to go home"
                                 : i % 2 ? sentences[3]
                                         : sentences[6]);
        sound.rate = part.rate;
        sound.samples.insert(sound.samples.end(), part.samples.begin(), part.samples.end());
        sound.samples.resize(sound.samples.size() + static_cast<std::size_t>(part.rate) / 2);
        if (i > 0) expected += " " + (i % 2 ? sentences[3] : sentences[6]);
    }
    ASSERT_GT(sound.samples.size(), static_cast<std::size_t>(sound.rate) * 16);
    EXPECT_EQ(transcribe(m4aOf(sound)), expected + ".");
}

TEST_F(SpeechServiceTest, RefusalsReachTheUserAsSentences) {
    startWithSentences();
    const auto audio = m4aOf(spoken("we need more time"));
    EXPECT_EQ(transcribe(audio, "bad-key"), "Your API key was rejected. Replace it in Settings.");
    const std::string failed = "Transcription failed (HTTP 400). Check your model and try again.";
    EXPECT_EQ(transcribe(Bytes(5000, 'x')), failed);
    EXPECT_EQ(transcribe(Bytes(audio.begin(), audio.begin() + 300)), failed);
    EXPECT_EQ(transcribe(m4aOf({16'000, std::vector<std::int16_t>(32'000)})),
              "No speech was recognized. Try again closer to the microphone.");
    EXPECT_EQ(transcribe(audio), "we need more time");
}

TEST_F(SpeechServiceTest, RequestsThatNoClientOfOursSendsHaveTheirStatus) {
    startWithSentences();
    const auto good = TranscriptionClient::request({1, 2, 3}, "sk-test", options, address);
    const auto statusWith = [&](const std::string& from, const std::string& to) {
        auto request = good;
        const auto at = std::ranges::search(request.body, from).begin();
        EXPECT_NE(at, request.body.end());
        std::ranges::copy(to, at);
        return statusOf(request);
    };
    EXPECT_EQ(statusWith("gpt-4o-transcribe", "gpt-4o-transcribX"), 404);
    EXPECT_EQ(statusWith("name=\"model\"", "name=\"mOdEl\""), 400);
    EXPECT_EQ(statusWith("name=\"file\"", "name=\"fIlE\""), 400);
    auto large = good;
    large.body.resize((25u << 20) + 1);
    EXPECT_EQ(statusOf(large), 413);
    auto anonymous = good;
    anonymous.headers.erase(anonymous.headers.begin());
    EXPECT_EQ(statusOf(anonymous), 401);
    auto untyped = good;
    untyped.headers.pop_back();
    EXPECT_EQ(statusOf(untyped), 400);
    EXPECT_EQ(statusOf(requestTo("HEAD", "/")), 200);
    EXPECT_EQ(statusOf(requestTo("POST", "/")), 405);
    EXPECT_EQ(statusOf(requestTo("GET", "/v1/models")), 404);
}

TEST_F(SpeechServiceTest, OnlyItsOwnKeyIsAcceptedWhenItHasOne) {
    const auto audio = m4aOf(spoken("we need more time"));
    const std::string rejected = "Your API key was rejected. Replace it in Settings.";
    const auto key = folder.write("key", "bad but mine\n");
    startWithSentences({"--key-file", key});
    EXPECT_EQ(transcribe(audio, "bad but mine"), "we need more time");
    EXPECT_EQ(transcribe(audio, "bad but min"), rejected);
    EXPECT_EQ(transcribe(audio, "sk-test"), rejected);

    setenv("QUORVI_SPEECH_SERVICE_KEY", "sk-own", 1);
    startWithSentences();
    unsetenv("QUORVI_SPEECH_SERVICE_KEY");
    EXPECT_EQ(transcribe(audio, "sk-own"), "we need more time");
    EXPECT_EQ(transcribe(audio, "sk-test"), rejected);
}

TEST_F(SpeechServiceTest, StoppedRequestDoesNotHoldUpTheNext) {
    startWithSentences({"--delay-ms", "200"});
    std::stop_source stop;
    Running<std::string> stopped(client->transcribe(m4aOf(spoken("we need more time")), "sk-test",
                                                    options, stop.get_token()));
    scheduler.runFor(std::chrono::milliseconds(100));  // most likely in the service's queue by now
    stop.request_stop();
    ASSERT_TRUE(await(scheduler, stopped));
    EXPECT_TRUE(stopped.cancelled());
    EXPECT_EQ(transcribe(m4aOf(spoken("she is a teacher"))), "she is a teacher");
}

TEST_F(SpeechServiceTest, SignalEndsItCleanlyWhileRequestsWait) {
    startWithSentences({"--delay-ms", "600000"});
    Running<std::string> waiting(
        client->transcribe(m4aOf(spoken("we need more time")), "sk-test", options, {}));
    EXPECT_EQ(statusOf(requestTo("GET", "/")), 200);
    service->signal(SIGTERM);
    ASSERT_TRUE(await(scheduler, waiting));
    EXPECT_NE(waiting.failure(), "");
    EXPECT_EQ(service->wait(), 0);
}

TEST_F(SpeechServiceTest, ExitCodesTellWhyItDidNotStart) {
    const auto exitCode = [](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), program);
        Process process(arguments);
        process.readAll();
        return process.wait();
    };
    using Arguments = std::vector<std::string>;
    EXPECT_EQ(exitCode({"--help"}), 0);
    for (const auto& wrong : {Arguments{"--unknown"},
                              {"--port", "65536"},
                              {"--port", "80x"},
                              {"--listen", "192.0.2.1"},
                              {"--listen", "0.0.0.0"},
                              {"--grammar", known, "--sentences", known}})
        EXPECT_EQ(exitCode(wrong), 2) << wrong[0];
    EXPECT_EQ(exitCode({"--model", "/nonexistent"}), 1);
    EXPECT_EQ(exitCode({"--key-file", "/nonexistent"}), 1);
    EXPECT_EQ(exitCode({"--grammar", known}), 1);
    const auto unknownWord = folder.write("unknown", "we need more xyzzyqwerty\n");
    EXPECT_EQ(exitCode({"--sentences", unknownWord}), 1);
    startWithSentences();
    EXPECT_EQ(exitCode({"--sentences", known, "--port", address.substr(address.rfind(':') + 1)}),
              1);
}

}  // namespace
}  // namespace quorvi::test
