#include "Quorvi/transcription/OfflineRecogniser.h"

#include <algorithm>
#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

void OfflineRecogniser::prepare() {
    if (!isInstalled()) return;
    idle_ = scheduler_.after(idleLimit, [this] { end(); });
    // A failure is no reason to wait once the user tries again.
    if (!run_) start();
}

void OfflineRecogniser::start() {
    restart_.cancel();
    run_ = program_->start({.onServing =
                                [this](ServiceProgram::Endpoint endpoint) {
                                    endpoint_ = std::move(endpoint);
                                    for (auto& each : std::exchange(waiting_, {})) each.resolve();
                                },
                            .onEnd = [this] { ended(); }});
}

void OfflineRecogniser::ended() {
    run_.reset();
    endpoint_.reset();
    const Duration rest = std::chrono::milliseconds(500) * (1 << std::min(failures_++, 10));
    restart_ = scheduler_.after(std::min(rest, longestRest), [this] { start(); });
}

Task<ServiceProgram::Endpoint> OfflineRecogniser::endpoint(std::stop_token stop) {
    if (!isInstalled()) throw QuorviError::message(say::offlineNotInstalled());
    prepare();
    const auto latest = scheduler_.now() + startLimit;
    while (!endpoint_) {
        if (scheduler_.now() >= latest) throw QuorviError::message(say::offlineNotServing());
        Promise<void> change(scheduler_);
        waiting_.push_back(change);
        const auto tooLate =
            scheduler_.after(latest - scheduler_.now(), [change]() mutable { change.resolve(); });
        auto changing = change.future(stop);
        co_await changing;
    }
    co_return *endpoint_;
}

void OfflineRecogniser::end() {
    idle_.cancel();
    restart_.cancel();
    run_.reset();
    endpoint_.reset();
}

}  // namespace quorvi
