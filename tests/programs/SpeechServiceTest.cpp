#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/curl/CurlTransport.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixServiceProgram.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/transcription/TranscriptionClient.h"
#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"
#include "tests/support/sound/SpeechSamples.h"

namespace quorvi::test {
namespace {

const std::string program = builtProgram("quorvi-speech-service");
const TranscriptionOptions options{DictationLanguage::automatic, TranscriptionModel::fourO, "x"};
const std::vector<std::string> sentences{"the weather is nice today", "i will see you tomorrow",
                                         "please call me back later", "we need more time",
                                         "she is a teacher"};
constexpr auto sentenceLines =
    "the weather is nice today\ni will see you tomorrow\nplease call me back later\n"
    "we need more time\nshe is a teacher\n";
constexpr auto rejected = "Your API key was rejected. Replace it in Settings.";

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
    LoopScheduler scheduler;
    CurlTransport transport{scheduler};
    SerialExecutor disk{"disk"};
    TestFolder folder;
    std::string known = folder.write("sentences", sentenceLines);
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
        EXPECT_EQ(all[i]->value(), sentences[i]) << all[i]->failure();
    }
}

TEST_F(SpeechServiceTest, RefusalsReachTheUserAsSentences) {
    startWithSentences();
    const auto audio = m4aOf(spoken("we need more time"));
    EXPECT_EQ(transcribe(audio, "bad-key"), rejected);
    const std::string failed = "Transcription failed (HTTP 400). Check your model and try again.";
    EXPECT_EQ(transcribe(Bytes(5000, 'x')), failed);
    EXPECT_EQ(transcribe(Bytes(audio.begin(), audio.begin() + 300)), failed);
    EXPECT_EQ(transcribe(m4aOf({16'000, std::vector<std::int16_t>(32'000)})),
              "No speech was recognized. Try again closer to the microphone.");
    EXPECT_EQ(transcribe(audio), "we need more time");
}

TEST_F(SpeechServiceTest, LongRecordingIsRecognisedPieceByPieceAndPunctuated) {
    const auto grammar = folder.write("grammar",
                                      "#JSGF V1.0;\ngrammar g;\npublic <g> = (i want to go home | "
                                      "we need more time | she is a teacher)+;\n");
    start({"--grammar", grammar, "--punctuate"});
    Sound sound;
    std::string expected;
    for (int i = 0; i < 10; ++i) {
        const std::string sentence = i == 0 ? "I want to go home" : sentences[i % 2 ? 3 : 4];
        const auto part = spoken(sentence);
        sound.rate = part.rate;
        sound.samples.insert(sound.samples.end(), part.samples.begin(), part.samples.end());
        sound.samples.resize(sound.samples.size() + static_cast<std::size_t>(part.rate) / 2);
        expected += (i == 0 ? "" : " ") + sentence;
    }
    EXPECT_EQ(transcribe(m4aOf(sound)), expected + ".");
}

TEST_F(SpeechServiceTest, RequestsThatNoClientOfOursSendsHaveTheirStatus) {
    startWithSentences();
    const auto good = TranscriptionClient::request({1, 2, 3}, "sk-test", options, address);
    using Change = std::function<void(HttpRequest&)>;
    const auto renaming = [](std::string_view from, std::string_view to) -> Change {
        return [=](HttpRequest& request) {
            std::ranges::copy(to, std::ranges::search(request.body, from).begin());
        };
    };
    const std::pair<int, Change> rows[] = {
        {404, renaming("gpt-4o-transcribe", "gpt-4o-transcribX")},
        {400, renaming("name=\"model\"", "name=\"mOdEl\"")},
        {400, renaming("name=\"file\"", "name=\"fIlE\"")},
        {413, [](auto& request) { request.body.resize((25u << 20) + 1); }},
        {401, [](auto& request) { request.headers.erase(request.headers.begin()); }},
        {400, [](auto& request) { request.headers.pop_back(); }},
        {405, [&](auto& request) { request = {.method = "POST", .url = address + "/"}; }},
        {404, [&](auto& request) { request = {.method = "GET", .url = address + "/v1/models"}; }}};
    for (const auto& row : rows) {
        auto request = good;
        row.second(request);
        EXPECT_EQ(statusOf(request), row.first) << "row " << &row - rows;
    }
}

TEST_F(SpeechServiceTest, OnlyItsOwnKeyIsAcceptedWhenItHasOne) {
    const auto audio = m4aOf(spoken("we need more time"));
    startWithSentences({"--key-file", folder.write("key", "bad but mine\n")});
    EXPECT_EQ(transcribe(audio, "bad but mine"), "we need more time");
    EXPECT_EQ(transcribe(audio, "bad but min"), rejected);
    EXPECT_EQ(transcribe(audio, "sk-test"), rejected);
}

TEST_F(SpeechServiceTest, SignalEndsItCleanlyWhileRequestsWait) {
    startWithSentences({"--delay-ms", "600000"});
    Running<std::string> waiting(
        client->transcribe(m4aOf(spoken("we need more time")), "sk-test", options, {}));
    EXPECT_EQ(statusOf({.method = "GET", .url = address + "/"}), 200);
    service->signal(SIGTERM);
    ASSERT_TRUE(await(scheduler, waiting));
    EXPECT_NE(waiting.failure(), "");
    EXPECT_EQ(service->wait(), 0);
}

TEST_F(SpeechServiceTest, ASupervisedOneServesItsStarterAloneAndEndsWithIt) {
    std::optional<ServiceProgram::Endpoint> endpoint;
    int ends = 0;
    PosixServiceProgram supervisor(scheduler, disk, program,
                                   {"--supervised", "--sentences", known});
    const auto start = [&] {
        endpoint.reset();
        auto run =
            supervisor.start({[&](auto where) { endpoint = std::move(where); }, [&] { ++ends; }});
        EXPECT_TRUE(until(scheduler, [&] { return endpoint.has_value(); }));
        client = std::make_unique<TranscriptionClient>(transport, endpoint->address);
        return run;
    };
    const auto ours = " -P " + std::to_string(getpid()) + " -f -- '[-]-supervised'";
    const auto children = [&] { return shell("pgrep -c" + ours); };
    const auto audio = m4aOf(spoken("we need more time"));
    auto run = start();
    EXPECT_EQ(transcribe(audio, endpoint->token), "we need more time");
    EXPECT_EQ(transcribe(audio, "sk-test"), rejected);
    const auto shownToOthers = shell("cd /proc/$(pgrep" + ours + ") && cat cmdline environ");
    EXPECT_NE(shownToOthers.find("--supervised"), std::string::npos);
    EXPECT_EQ(shownToOthers.find(endpoint->token), std::string::npos);
    shell("pkill -KILL" + ours);
    EXPECT_TRUE(until(scheduler, [&] { return ends == 1; }));
    run = start();
    run.reset();
    EXPECT_TRUE(until(scheduler, [&] { return children() == "0\n"; }));
    EXPECT_EQ(ends, 1) << "nobody asked any more";

    // Its starter is killed.
    Process orphan({program, "--supervised", "--sentences", known}, {}, Process::Input::own);
    orphan.writeLine("key");
    orphan.readLine();
    orphan.closeInput();
    EXPECT_EQ(orphan.wait(), 0);
    PosixServiceProgram nothing(scheduler, disk, folder.path() / "later", {});
    EXPECT_FALSE(nothing.isInstalled());
    const auto failing = nothing.start({[](auto) { FAIL(); }, [&] { ++ends; }});
    EXPECT_TRUE(until(scheduler, [&] { return ends == 2; }));
    int news = 0;
    const auto changes = nothing.onInstalledChange([&] { ++news; });
    std::filesystem::create_symlink(program, folder.path() / "later");
    EXPECT_TRUE(until(scheduler, [&] { return nothing.isInstalled(); }));
    EXPECT_EQ(news, 1);
}

TEST_F(SpeechServiceTest, ExitCodesTellWhyItDidNotStart) {
    using Arguments = std::vector<std::string>;
    const std::pair<Arguments, int> rows[] = {
        {{"--help"}, 0},
        {{"--port", "65536"}, 2},
        {{"--listen", "0.0.0.0"}, 2},
        {{"--grammar", known, "--sentences", known}, 2},
        {{"--key-file", "/nonexistent"}, 1},
        {{"--grammar", known}, 1},
        {{"--supervised"}, 1},
        {{"--sentences", folder.write("unknown", "we need more xyzzyqwerty\n")}, 1}};
    for (auto [arguments, code] : rows) {
        arguments.insert(arguments.begin(), program);
        Process process(arguments);
        process.readAll();
        EXPECT_EQ(process.wait(), code) << arguments[1];
    }
}

}  // namespace
}  // namespace quorvi::test
