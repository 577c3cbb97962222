#pragma once

#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "QuorviCore/async/Future.h"
#include "QuorviCore/transcription/HttpTransport.h"

namespace quorvi {

// A transport that answers from a script. An answer given while a request waits goes to the request
// that has waited longest; otherwise it is kept for the next one. Without an answer a request waits
// until it is stopped.
class FakeHttpTransport : public HttpTransport {
public:
    explicit FakeHttpTransport(Scheduler& scheduler) : scheduler_(scheduler) {}

    Task<HttpResponse> send(HttpRequest request, std::stop_token stop) override;
    void openConnection(std::string url) override { opened.push_back(std::move(url)); }

    void answer(int status, const std::string& body = "");
    // The request fails in transport with this sentence.
    void fail(const std::string& sentence);

    bool isWaiting() const;

    // The journal.
    std::vector<HttpRequest> requests;
    std::vector<std::string> opened;  // URLs of openConnection()
    int stopped = 0;                  // requests that ended by a stop

private:
    using Deliver = std::function<void(Promise<HttpResponse>&)>;
    struct Waiting {
        Promise<HttpResponse> promise;
        std::weak_ptr<int> request;  // lives in the frame of the request's coroutine
    };

    void deliver(Deliver outcome);

    Scheduler& scheduler_;
    std::deque<Deliver> script_;
    std::deque<Waiting> waiting_;
};

}  // namespace quorvi
