#pragma once

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

struct HttpRequest {
    std::string method = "GET";
    std::string url;
    std::vector<std::pair<std::string, std::string>> headers;
    Bytes body;
    Duration timeout = std::chrono::seconds(60);  // without progress
    // A body that is longer is not read to its end: send() throws, or returns the status alone if
    // that is a refusal.
    std::size_t longestAnswer = 64u << 20;
};

struct HttpResponse {
    int status = 0;  // 0 if the answer was not HTTP
    Bytes body;
};

// An HTTP client: keeps no cookies, caches or credentials, verifies certificates, does not follow
// redirects. Main thread; transfers run on another thread.
class HttpTransport {
public:
    virtual ~HttpTransport() = default;

    // Sends the request and returns the whole response. Without a response (no connection,
    // time-out, TLS failure) throws an exception with a displayable what(); throws Cancelled within
    // 10 ms of a stop.
    virtual Task<HttpResponse> send(HttpRequest request, std::stop_token stop) = 0;

    // Opens a connection to the URL's host in advance, which saves the next request the handshake.
    // Returns at once; a failure only shows in that request.
    virtual void openConnection(std::string url) = 0;
};

}  // namespace quorvi
