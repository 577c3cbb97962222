#pragma once

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
};

struct HttpResponse {
    int status = 0;  // 0 when the peer answered with something that is not HTTP
    Bytes body;
};

// One session of an HTTP client: no cookies, caches or credentials are kept, certificates are
// verified, redirects are not followed. Main thread only; transfers run elsewhere.
class HttpTransport {
public:
    virtual ~HttpTransport() = default;

    // Sends the request and yields the whole response. Throws an exception with a displayable
    // what() when there is none (no connection, time-out, TLS failure), Cancelled within 10 ms of
    // a stop.
    virtual Task<HttpResponse> send(HttpRequest request, std::stop_token stop) = 0;

    // Opens a connection to the URL's host ahead of a request that is expected, so that the request
    // pays no handshake. Returns at once; a failure shows itself only in the later request.
    virtual void openConnection(std::string url) = 0;
};

}  // namespace quorvi
