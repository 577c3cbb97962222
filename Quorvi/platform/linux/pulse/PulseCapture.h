#pragma once

#include <memory>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/platform/linux/pulse/CaptureSession.h"

namespace quorvi {

// The main thread's side of one recording; CaptureSession does the work.
class PulseCapture : public AudioCapture {
public:
    explicit PulseCapture(std::shared_ptr<CaptureSession> session);
    ~PulseCapture() override;

    Task<void> record(std::filesystem::path file, AudioSettings settings,
                      std::stop_token stop) override;
    void stop() override;
    Task<void> finished() override;
    double currentTime() const override;
    float averagePower() override;

private:
    void ended(CaptureEnd end);

    std::shared_ptr<CaptureSession> session_;
    bool running_ = false;
    int sampleRate_ = AudioSettings{}.sampleRate;
};

}  // namespace quorvi
