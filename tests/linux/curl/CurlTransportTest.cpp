#include "Quorvi/platform/linux/curl/CurlTransport.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "QuorviCore/messages/Message.h"
#include "tests/support/Waiting.h"
#include "tests/support/network/TlsServer.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr auto peer = Sentence::speechService;

HttpRequest get(const std::string& url) {
    return {.method = "GET", .url = url, .headers = {}, .body = {}};
}

HttpRequest post(const std::string& url, Bytes body) {
    return {.method = "POST", .url = url, .headers = {}, .body = std::move(body)};
}

std::string text(const std::optional<HttpResponse>& response) {
    return response ? std::string(response->body.begin(), response->body.end()) : "(no response)";
}

Bytes pattern(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i * 31 + i / 251);
    return bytes;
}

// The authority and the usual server are made once: each takes a third of a second.
class CurlTransportTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        authority = std::make_unique<TestAuthority>();
        authority->issue("server", "IP:127.0.0.1,DNS:localhost");
    }
    static void TearDownTestSuite() { authority.reset(); }

    std::optional<HttpResponse> send(HttpRequest request) {
        Running<HttpResponse> running(transport->send(std::move(request), {}));
        EXPECT_TRUE(await(scheduler, running));
        failure = running.failure();
        return running.value();
    }
    // Read over a transport of its own, whose connections the tested one can't use.
    std::string journal() {
        Running<HttpResponse> running(observer.send(get(server.url("/stats")), {}));
        EXPECT_TRUE(await(scheduler, running));
        return text(running.value());
    }
    std::size_t connections() {
        const auto told = journal();
        const std::string key = "\"connections\": ";
        return std::stoul(told.substr(told.find(key) + key.size()));
    }
    void waitForRequest(const std::string& line) {
        while (journal().find(line) == std::string::npos) scheduler.runFor(5ms);
    }

    static std::unique_ptr<TestAuthority> authority;
    LoopScheduler scheduler;
    TlsServer server{*authority, "server"};
    std::unique_ptr<CurlTransport> transport =
        std::make_unique<CurlTransport>(scheduler, authority->caFile());
    CurlTransport observer{scheduler, authority->caFile()};
    std::string failure;
};
std::unique_ptr<TestAuthority> CurlTransportTest::authority;

TEST_F(CurlTransportTest, BodiesPassByteForByteInBothDirectionsWithoutWaitingForContinue) {
    auto request = post(server.url("/tell"), pattern(2'000'000));
    request.headers = {{"Authorization", "Bearer sk-test"}};
    const auto response = send(std::move(request));
    ASSERT_TRUE(response) << failure;
    EXPECT_EQ(response->status, 200);
    EXPECT_EQ(text(response),
              R"({"bytes": 2000000, "expect": "none", "authorization": "Bearer sk-test"})");
    const auto echoed = send(post(server.url("/echo"), pattern(20'000'000)));
    ASSERT_TRUE(echoed) << failure;
    EXPECT_TRUE(echoed->body == pattern(20'000'000));
}

TEST_F(CurlTransportTest, OnlyAValidCertificateForTheHostIsTrusted) {
    const auto distrust = say::serverCertificateInvalid(peer).english();
    authority->issue("elsewhere", "DNS:speech.example");
    authority->issue("expired", "IP:127.0.0.1", 0);
    for (const std::string name : {"elsewhere", "expired"}) {
        TlsServer other(*authority, name);
        EXPECT_FALSE(send(get(other.url("/stats")))) << name;
        EXPECT_EQ(failure, distrust) << name;
    }
    transport = std::make_unique<CurlTransport>(scheduler);  // trusts only the system's authorities
    EXPECT_FALSE(send(get(server.url("/stats"))));
    EXPECT_EQ(failure, distrust);
    TestAuthority stranger;
    transport = std::make_unique<CurlTransport>(scheduler, stranger.caFile());
    EXPECT_FALSE(send(get(server.url("/stats"))));
    EXPECT_EQ(failure, distrust);
}

TEST_F(CurlTransportTest, AFailureIsReportedInASentence) {
    const std::string refusing = "https://127.0.0.1:1/";
    const std::pair<std::string, Message> rows[] = {
        {refusing, say::serverRefused(peer)},
        {"https://speech.invalid/", say::serverNotFound(peer)},
        {server.url("/cut"), say::serverConnectionLost(peer)},
        {server.url("/silent"), say::serverConnectionLost(peer)},
        {server.url("/endless"), say::serviceAnswerTooLarge()},
    };
    for (const auto& [url, sentence] : rows) {
        EXPECT_FALSE(send(get(url))) << url;
        EXPECT_EQ(failure, sentence.english()) << url;
    }
    auto bounded = post(server.url("/echo"), pattern(100'000));
    bounded.longestAnswer = 99'999;
    EXPECT_FALSE(send(bounded));
    EXPECT_EQ(failure, say::serviceAnswerTooLarge().english());
    bounded.longestAnswer = 100'000;
    EXPECT_TRUE(send(bounded)) << failure;
    // An answer that is not HTTP is an answer without a status.
    const auto garbage = send(get(server.url("/garbage")));
    ASSERT_TRUE(garbage) << failure;
    EXPECT_EQ(garbage->status, 0);
    // A header with a line break isn't sent.
    auto request = get(server.url("/tell"));
    request.headers = {{"Authorization", "Bearer a\r\nX-Other: b"}};
    EXPECT_FALSE(send(std::move(request)));
    EXPECT_EQ(journal().find("/tell"), std::string::npos);
    // What fails while a connection is opened shows only in the request.
    transport->openConnection(refusing);
    transport->openConnection("no address at all");
    EXPECT_TRUE(send(get(server.url("/stats")))) << failure;
}

TEST_F(CurlTransportTest, PeerThatStopsAnsweringTimesOut) {
    const auto late = say::serverTimedOut(peer).english();
    for (const auto* path : {"/never", "/stalls"}) {
        auto request = get(server.url(path));
        request.timeout = 1s;
        EXPECT_FALSE(send(std::move(request)));
        EXPECT_EQ(failure, late) << path;
    }
}

TEST_F(CurlTransportTest, RedirectsAndCookiesAreNotFollowed) {
    const auto moved = send(get(server.url("/redirect")));
    ASSERT_TRUE(moved) << failure;
    EXPECT_EQ(moved->status, 302);
    EXPECT_EQ(text(moved), "moved");
    EXPECT_EQ(journal().find("/target"), std::string::npos);
    EXPECT_EQ(text(send(get(server.url("/cookie")))), "none");
    EXPECT_EQ(text(send(get(server.url("/cookie")))), "none");
}

TEST_F(CurlTransportTest, RequestUsesTheConnectionOpenedBefore) {
    transport->openConnection(server.url("/opened"));
    waitForRequest("answered /opened");  // so the transport reads the answer before it goes on
    const auto before = connections();
    ASSERT_TRUE(send(post(server.url("/tell"), pattern(50'000)))) << failure;
    EXPECT_EQ(connections(), before);
}

TEST_F(CurlTransportTest, OneConnectionIsOpenedAtATimeAndTheRequestDoesNotWaitForIt) {
    // The server answers the HEAD only after a POST.
    for (int i = 0; i < 5; ++i) transport->openConnection(server.url("/held"));
    waitForRequest("HEAD /held");
    ASSERT_TRUE(send(post(server.url("/tell"), pattern(50'000)))) << failure;
    const auto told = journal();
    EXPECT_EQ(told.find("HEAD /held"), told.rfind("HEAD /held")) << told;

    // Only one is kept. Where it is dead, as after a change of network, whoever asks first finds
    // that out and the next one has a new one, not another dead one.
    waitForRequest("answered /held");
    const Running<HttpResponse> waiting(transport->send(get(server.url("/never")), {}));
    waitForRequest("GET /never");
    const auto before = connections();
    ASSERT_TRUE(send(post(server.url("/tell"), pattern(50'000)))) << failure;
    EXPECT_EQ(connections(), before + 1);
}

TEST_F(CurlTransportTest, OpenedConnectionThatTheServerClosedIsReplaced) {
    transport->openConnection(server.url("/once"));
    waitForRequest("HEAD /once");
    const auto response = send(post(server.url("/tell"), pattern(50'000)));
    ASSERT_TRUE(response) << failure;
    EXPECT_EQ(response->status, 200);
}

TEST_F(CurlTransportTest, StopEndsTheRequestAndLeavesTheOthersAlone) {
    std::stop_source stop;
    Running<HttpResponse> stopped(transport->send(get(server.url("/never")), stop.get_token()));
    Running<HttpResponse> other(transport->send(post(server.url("/tell"), pattern(9)), {}));
    waitForRequest("GET /never");
    EXPECT_FALSE(stopped.ended());
    stop.request_stop();
    ASSERT_TRUE(await(scheduler, stopped));
    EXPECT_TRUE(stopped.cancelled());
    ASSERT_TRUE(await(scheduler, other));
    EXPECT_TRUE(other.value()) << other.failure();

    // A stop that comes first sends nothing at all.
    Running<HttpResponse> late(transport->send(get(server.url("/late")), stop.get_token()));
    EXPECT_TRUE(late.cancelled());
    EXPECT_EQ(journal().find("/late"), std::string::npos);
}

TEST_F(CurlTransportTest, DestructionEndsWhatIsUnderWay) {
    std::stop_source stop;
    Running<HttpResponse> waiting(transport->send(get(server.url("/never")), stop.get_token()));
    waitForRequest("GET /never");
    auto abandoned =
        std::make_unique<Running<HttpResponse>>(transport->send(get(server.url("/large")), {}));
    transport->openConnection(server.url("/held"));
    transport.reset();
    abandoned.reset();
    stop.request_stop();
    ASSERT_TRUE(await(scheduler, waiting));
    EXPECT_TRUE(waiting.cancelled());
}

}  // namespace
}  // namespace quorvi::test
