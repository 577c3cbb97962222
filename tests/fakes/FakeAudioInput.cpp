#include "tests/fakes/FakeAudioInput.h"

#include <filesystem>
#include <fstream>
#include <utility>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/transcription/QuorviError.h"

namespace quorvi {

struct FakeAudioInput::Script {
    explicit Script(Scheduler& s) : scheduler(s) {}

    Scheduler& scheduler;
    std::function<float(double)> levels = [](double) { return -20.0F; };
    Duration startDelay{};
    Duration finishDelay{};
    Bytes recording{'r', 'e', 'c', 'o', 'r', 'd', 'e', 'd'};
    std::optional<std::string> recordFailure;
    std::optional<std::string> finishFailure;
    Capture* active = nullptr;
    int captures = 0;
};

class FakeAudioInput::Capture : public AudioCapture {
public:
    explicit Capture(std::shared_ptr<Script> script) : script_(std::move(script)) {}
    ~Capture() override { stop(); }

    Task<void> record(std::filesystem::path file, AudioSettings, std::stop_token stop) override {
        auto opening = sleepFor(script_->scheduler, script_->startDelay, stop);
        co_await opening;
        if (script_->recordFailure) throw QuorviError::message(*script_->recordFailure);
        file_ = std::move(file);
        if (!std::ofstream(file_, std::ios::binary))
            throw std::filesystem::filesystem_error(
                "Cannot create the recording", file_,
                std::make_error_code(std::errc::permission_denied));
        using std::filesystem::perms;
        std::filesystem::permissions(file_, perms::owner_read | perms::owner_write);
        began_ = script_->scheduler.now();
        script_->active = this;
    }

    void stop() override {
        if (!isRecording()) return;
        ended_ = script_->scheduler.now();
        script_->active = nullptr;
    }

    Task<void> finished() override {
        auto closing = sleepFor(script_->scheduler, script_->finishDelay, {});
        co_await closing;
        if (script_->finishFailure) throw QuorviError::message(*script_->finishFailure);
        std::ofstream out(file_, std::ios::binary | std::ios::app);
        for (const auto byte : script_->recording) out.put(static_cast<char>(byte));
    }

    double currentTime() const override {
        if (!began_) return 0;
        return std::chrono::duration<double>(ended_.value_or(script_->scheduler.now()) - *began_)
            .count();
    }

    float averagePower() override {
        return isRecording() ? script_->levels(currentTime()) : -160.0F;
    }

    bool isRecording() const { return script_->active == this; }

private:
    std::shared_ptr<Script> script_;
    std::filesystem::path file_;
    std::optional<TimePoint> began_;
    std::optional<TimePoint> ended_;
};

FakeAudioInput::FakeAudioInput(Scheduler& scheduler)
    : script_(std::make_shared<Script>(scheduler)) {}

std::unique_ptr<AudioCapture> FakeAudioInput::makeCapture() {
    ++script_->captures;
    return std::make_unique<Capture>(script_);
}

void FakeAudioInput::setLevel(float decibels) {
    script_->levels = [decibels](double) { return decibels; };
}
void FakeAudioInput::setLevels(std::function<float(double)> levels) {
    script_->levels = std::move(levels);
}
void FakeAudioInput::setStartDelay(Duration delay) {
    script_->startDelay = delay;
}
void FakeAudioInput::setFinishDelay(Duration delay) {
    script_->finishDelay = delay;
}
void FakeAudioInput::setRecording(Bytes content) {
    script_->recording = std::move(content);
}
void FakeAudioInput::failRecord(std::optional<std::string> sentence) {
    script_->recordFailure = std::move(sentence);
}
void FakeAudioInput::failFinish(std::optional<std::string> sentence) {
    script_->finishFailure = std::move(sentence);
}
bool FakeAudioInput::isCapturing() const {
    return script_->active != nullptr;
}
int FakeAudioInput::captures() const {
    return script_->captures;
}

void FakeAudioInput::end(CaptureEnd reason) {
    auto* capture = script_->active;
    if (!capture) return;
    capture->stop();
    const auto onEnded = capture->onEnded;  // the owner may destroy the capture inside
    if (onEnded) onEnded(reason);
}

}  // namespace quorvi
