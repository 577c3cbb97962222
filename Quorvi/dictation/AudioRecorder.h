#pragma once

#include <functional>
#include <memory>
#include <stop_token>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/platform/RecordingFiles.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Bytes.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// Records the microphone into a private temporary file while the user dictates. No recording
// outlives its dictation on the disk: whether it ends with its bytes, a failure, discard() or a
// cancellation at any point, its file is deleted. A recording that runs has no name, so it vanishes
// with the process as well.
//
// Main thread; owned by the dictation's session. Files are prepared, read and deleted on `disk`,
// which should take jobs quickly (a start waits for one). `disk` and `files` outlive the recorder,
// and `disk` completes a deletion that is queued at the end. The running start() or finish() task
// may be destroyed at any time, also after the recorder.
class AudioRecorder {
public:
    AudioRecorder(AudioInput& input, RecordingFiles& files, Executor& disk, Scheduler& scheduler);
    ~AudioRecorder();
    AudioRecorder(const AudioRecorder&) = delete;
    AudioRecorder& operator=(const AudioRecorder&) = delete;

    // Called with true when capturing has started, and exactly once with false when it ends.
    std::function<void(bool)> onRecordingChanged;
    // Called with the reason when a recording stops by itself. It is kept until discard().
    std::function<void(Message)> onFailure;

    // Discards the previous recording and begins a new one. Throws QuorviError or another exception
    // with a displayable what(), and Cancelled when `stop` is triggered or the recording is stopped
    // or discarded meanwhile.
    Task<void> start(std::stop_token stop);

    // Stops and returns the whole encoded recording. Throws QuorviError when there is none, and
    // Cancelled when `stop` is triggered or the recording is discarded meanwhile.
    Task<Bytes> finish(std::stop_token stop);

    // Ends capturing and keeps the recording for finish(). Gives up one that is still starting.
    void stopCapture();

    // Ends capturing and gives the recording up, also while it starts or is being finished.
    void discard();

    bool isCapturing() const;

    // Seconds recorded; 0 without a recording.
    double duration() const;

    // Average input power since the last call in dB relative to full scale; -160 without a
    // recording.
    float meter();

    // Prepares in advance what the next start() would wait for.
    void prepare();

    // Deletes the recordings that a killed program left behind. Call it before the first start().
    void removeStaleRecordings();

private:
    struct Recording;
    class Guard;

    void captureEnded(CaptureEnd end);

    AudioInput& input_;
    RecordingFiles& files_;
    Executor& disk_;
    Scheduler& scheduler_;
    std::shared_ptr<Recording> recording_;  // shared with the task that starts or finishes it
};

}  // namespace quorvi
