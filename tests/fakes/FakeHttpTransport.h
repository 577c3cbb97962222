#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/HttpTransport.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi::test {

// A service that answers each request after a while, with its fields as they are then.
class FakeHttpTransport : public HttpTransport {
public:
    explicit FakeHttpTransport(Scheduler& scheduler) : scheduler_(scheduler) {}

    Task<HttpResponse> send(HttpRequest request, std::stop_token stop) override {
        requests.push_back(std::move(request));
        auto travelling = sleepFor(scheduler_, answersAfter, deaf ? std::stop_token{} : stop);
        co_await travelling;
        if (failure) throw QuorviError::message(*failure);
        co_return HttpResponse{status, Bytes(body.begin(), body.end())};
    }
    void openConnection(std::string url) override { opened.push_back(std::move(url)); }

    Duration answersAfter = std::chrono::milliseconds(500);
    bool deaf = false;  // answers a cancelled request, too
    int status = 200;
    std::string body = R"({"text":"hello there"})";
    std::optional<Message> failure;  // thrown instead of an answer

    std::vector<HttpRequest> requests;
    std::vector<std::string> opened;  // URLs of openConnection()

private:
    Scheduler& scheduler_;
};

}  // namespace quorvi::test
