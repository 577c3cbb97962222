#include "Quorvi/platform/linux/pulse/PulseCapture.h"

#include <exception>
#include <utility>

namespace quorvi {

namespace {

// Abandons a session that did not start, also when the waiting coroutine is destroyed.
class GiveUp {
public:
    explicit GiveUp(std::shared_ptr<CaptureSession> session) : session_(std::move(session)) {}
    GiveUp(const GiveUp&) = delete;
    GiveUp& operator=(const GiveUp&) = delete;
    ~GiveUp() {
        if (session_) session_->giveUp();
    }
    void dismiss() { session_.reset(); }

private:
    std::shared_ptr<CaptureSession> session_;
};

}  // namespace

PulseCapture::PulseCapture(std::shared_ptr<CaptureSession> session) : session_(std::move(session)) {
    session_->onEnded = [this](CaptureEnd end) { ended(end); };
}

PulseCapture::~PulseCapture() {
    session_->onEnded = nullptr;
    stop();
}

Task<void> PulseCapture::record(std::filesystem::path file, AudioSettings settings,
                                std::stop_token stop) {
    throwIfStopped(stop);
    const auto session = session_;
    sampleRate_ = settings.sampleRate;
    GiveUp guard(session);
    auto started = session->started.future(std::move(stop));
    session->begin(std::move(file), settings);
    std::exception_ptr failure;
    try {
        co_await started;
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure) {
        auto removed = session->removed.future();
        session->giveUp();
        co_await removed;
        std::rethrow_exception(failure);
    }
    guard.dismiss();
    running_ = true;
}

void PulseCapture::stop() {
    if (std::exchange(running_, false)) session_->stop();
}

Task<void> PulseCapture::finished() {
    const auto session = session_;
    auto complete = session->finished.future();
    co_await complete;
}

double PulseCapture::currentTime() const {
    return static_cast<double>(session_->capturedSamples()) / sampleRate_;
}

float PulseCapture::averagePower() {
    return session_->averagePower();
}

void PulseCapture::ended(CaptureEnd end) {
    if (!std::exchange(running_, false)) return;
    // The handler may destroy this capture.
    if (const auto told = onEnded) told(end);
}

}  // namespace quorvi
