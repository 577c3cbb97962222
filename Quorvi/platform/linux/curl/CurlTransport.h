#pragma once

#include <memory>
#include <string>

#include "Quorvi/platform/HttpTransport.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The HTTP session over libcurl. One thread of its own drives every transfer and sleeps while there
// is none; results come back through the scheduler. Connections are kept for ten minutes in memory,
// and nothing else is: no cookies, no cache, no file. Lives on the main thread as long as the
// requests that are sent through it; those still under way at its destruction end with Cancelled.
class CurlTransport : public HttpTransport {
public:
    // `caFile` names the certificates to trust (PEM) instead of the system's.
    explicit CurlTransport(Scheduler& scheduler, std::string caFile = {});
    ~CurlTransport() override;

    Task<HttpResponse> send(HttpRequest request, std::stop_token stop) override;
    void openConnection(std::string url) override;

private:
    class Worker;

    Scheduler& scheduler_;
    std::unique_ptr<Worker> worker_;
};

}  // namespace quorvi
