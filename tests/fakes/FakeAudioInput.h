#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Quorvi/platform/AudioCapture.h"
#include "QuorviCore/Bytes.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// A microphone on the scheduler's clock. A recording is a small real file, so that the life of the
// file can be tested; its content is `recording`. What is set applies to captures that exist, too.
// Captures may outlive the input.
class FakeAudioInput : public AudioInput {
public:
    explicit FakeAudioInput(Scheduler& scheduler);

    std::unique_ptr<AudioCapture> makeCapture() override;
    void prepare() override { ++prepares; }

    // The level in dB at a time since the capture began.
    void setLevel(float decibels);
    void setLevels(std::function<float(double seconds)> levels);
    void setStartDelay(Duration delay);   // until record() resumes
    void setFinishDelay(Duration delay);  // until finished() completes
    void setRecording(Bytes content);
    void failRecord(std::optional<std::string> sentence);
    void failFinish(std::optional<std::string> sentence);

    bool isCapturing() const;  // whether any capture is recording now
    // Ends the capture that is recording, as a lost device or a full disk does.
    void end(CaptureEnd reason);

    int prepares = 0;
    int captures() const;  // made so far

private:
    struct Script;
    class Capture;

    std::shared_ptr<Script> script_;
};

}  // namespace quorvi
