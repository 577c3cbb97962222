#pragma once

#include <memory>
#include <string>

#include "Quorvi/platform/HttpTransport.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The HTTP session over libcurl. A thread of its own, which begins with the first transfer and
// loads libcurl, drives all of them and sleeps while there is none; results come back through the
// scheduler. Keeps connections for ten minutes, but no cookies, cache or file. Main thread; its
// destruction ends the running requests with Cancelled.
class CurlTransport : public HttpTransport {
public:
    // `caFile` names the certificates to trust (PEM) instead of the system's.
    explicit CurlTransport(Scheduler& scheduler, std::string caFile = {});
    ~CurlTransport() override;

    Task<HttpResponse> send(HttpRequest request, std::stop_token stop) override;
    void openConnection(std::string url) override;

private:
    class Worker;
    Worker& worker();  // begins with the first call

    Scheduler& scheduler_;
    const std::string caFile_;
    std::unique_ptr<Worker> worker_;
};

}  // namespace quorvi
