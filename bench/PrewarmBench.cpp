// The gain of opening the connection while the user speaks, over a link with a round trip of 80 ms;
// and how fast a running request is cancelled. Needs root, for the link.

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/curl/CurlTransport.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "bench/DelayedLink.h"
#include "bench/Figure.h"
#include "tests/support/Waiting.h"
#include "tests/support/network/TlsServer.h"

namespace {

using namespace quorvi;
using namespace std::chrono_literals;

constexpr int rounds = 15;

// One POST of the size of a short dictation, timed up to the complete answer. Each round has a new
// transport, so that no connection is left from the round before.
double postMilliseconds(LoopScheduler& scheduler, const test::TestAuthority& authority,
                        const test::TlsServer& server, bool opensBefore) {
    CurlTransport transport(scheduler, authority.caFile());
    if (opensBefore) {
        transport.openConnection(server.url("/"));
        scheduler.runFor(800ms);  // the user speaks
    }
    HttpRequest request;
    request.method = "POST";
    request.url = server.url("/tell");
    request.body.resize(50'000);
    const double begin = bench::millisecondsNow();
    test::Running<HttpResponse> running(transport.send(std::move(request), {}));
    if (!test::await(scheduler, running) || !running.value())
        throw std::runtime_error("the request failed: " + running.failure());
    return bench::millisecondsNow() - begin;
}

// From the stop to the resumption of the coroutine that waits for the answer.
double cancelMilliseconds(LoopScheduler& scheduler, CurlTransport& transport,
                          const test::TlsServer& server) {
    HttpRequest request;
    request.url = server.url("/never");
    std::stop_source stop;
    test::Running<HttpResponse> running(transport.send(std::move(request), stop.get_token()));
    scheduler.runFor(400ms);  // connected, and waiting for the answer
    const double begin = bench::millisecondsNow();
    stop.request_stop();
    if (!test::await(scheduler, running) || !running.cancelled())
        throw std::runtime_error("the request was not cancelled");
    return bench::millisecondsNow() - begin;
}

void run() {
    const test::TestAuthority authority;
    authority.issue("server", std::string("IP:") + bench::DelayedLink::farAddress);
    bench::DelayedLink link(40ms);
    const test::TlsServer server(authority, "server", bench::DelayedLink::farAddress);
    link.enterNearSide();

    LoopScheduler scheduler;
    std::vector<double> cold, opened, cancelled;
    for (int i = 0; i < rounds; ++i) {
        cold.push_back(postMilliseconds(scheduler, authority, server, false));
        opened.push_back(postMilliseconds(scheduler, authority, server, true));
    }
    CurlTransport transport(scheduler, authority.caFile());
    for (int i = 0; i < rounds; ++i)
        cancelled.push_back(cancelMilliseconds(scheduler, transport, server));
    bench::figure("prewarm", bench::median(opened), "ms", bench::median(cold));
    bench::figure("http_cancel", bench::median(cancelled), "ms");
}

}  // namespace

int main() {
    try {
        run();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "PrewarmBench: %s\n", error.what());
        return 1;
    }
}
