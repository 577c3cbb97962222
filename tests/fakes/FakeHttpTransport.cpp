#include "tests/fakes/FakeHttpTransport.h"

#include <algorithm>
#include <utility>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/transcription/QuorviError.h"

namespace quorvi {

Task<HttpResponse> FakeHttpTransport::send(HttpRequest request, std::stop_token stop) {
    throwIfStopped(stop);
    requests.push_back(std::move(request));
    Promise<HttpResponse> promise(scheduler_);
    auto future = promise.future(stop);
    const auto alive = std::make_shared<int>();
    if (script_.empty()) {
        waiting_.push_back({promise, alive});
    } else {
        const auto outcome = std::move(script_.front());
        script_.pop_front();
        outcome(promise);
    }
    try {
        co_return co_await future;
    } catch (const Cancelled&) {
        ++stopped;
        throw;
    }
}

void FakeHttpTransport::answer(int status, const std::string& body) {
    HttpResponse response{status, Bytes(body.begin(), body.end())};
    deliver([response](Promise<HttpResponse>& promise) { promise.resolve(response); });
}

void FakeHttpTransport::fail(const std::string& sentence) {
    const auto error = std::make_exception_ptr(QuorviError::message(sentence));
    deliver([error](Promise<HttpResponse>& promise) { promise.reject(error); });
}

bool FakeHttpTransport::isWaiting() const {
    return std::any_of(waiting_.begin(), waiting_.end(),
                       [](const Waiting& w) { return !w.request.expired(); });
}

void FakeHttpTransport::deliver(Deliver outcome) {
    std::erase_if(waiting_, [](const Waiting& w) { return w.request.expired(); });
    if (waiting_.empty()) {
        script_.push_back(std::move(outcome));
        return;
    }
    auto first = std::move(waiting_.front());
    waiting_.pop_front();
    outcome(first.promise);
}

}  // namespace quorvi
