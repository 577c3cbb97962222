#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>

#include "Quorvi/platform/AudioCapture.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// Records the microphone into a private temporary file while the user dictates, and sees to it that
// no recording outlives its dictation on the disk: whichever way a recording ends, with its bytes,
// with a failure, by discard() or by cancellation at any point, its file is deleted. As soon as it
// runs the file has no name any more, so that it goes with the process, too, however that ends.
//
// Main thread only; owned by the dictation controller. Files are checked, read and deleted on
// `disk`, which should be quick to take a job (a start waits for one) and which must outlive the
// recorder: a deletion requested at the end is done before the executor ends. The running start()
// or finish() task may be dropped at any time, also after the recorder is gone.
class AudioRecorder {
public:
    AudioRecorder(AudioInput& input, Executor& disk, Scheduler& scheduler,
                  std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                                 "VeskRecordings");
    ~AudioRecorder();
    AudioRecorder(const AudioRecorder&) = delete;
    AudioRecorder& operator=(const AudioRecorder&) = delete;

    // Told true when capture has started and false, exactly once for each recording, when it ends.
    std::function<void(bool)> onRecordingChanged;
    // Told a message when a recording stops on its own. The recording is kept until discard().
    std::function<void(std::string)> onFailure;

    // Discards any previous recording and begins a new one. Throws QuorviError or another exception
    // with a displayable what(); Cancelled when `stop` is triggered or the recording is stopped or
    // discarded meanwhile.
    Task<void> start(std::stop_token stop);

    // Stops and returns the whole encoded recording. Throws QuorviError when there is none, and
    // Cancelled when `stop` is triggered or the recording is discarded meanwhile.
    Task<Bytes> finish(std::stop_token stop);

    // Ends capturing; the recording is kept for finish(). A recording that is still starting is
    // given up.
    void stopCapture();

    // Ends capturing and gives the recording up, also one that is starting or being finished.
    void discard();

    // Seconds recorded; 0 without a recording.
    double duration() const;

    // Average input power since the last call in dB relative to full scale; -160 without a
    // recording.
    float meter();

    // Makes ready what the next start() would have to wait for.
    void prepare();

    // Deletes what a run of the program that ended while a recording began left behind. Call it
    // before the first start().
    void removeStaleRecordings();

private:
    struct Recording;
    class Guard;

    void captureEnded(CaptureEnd end);

    AudioInput& input_;
    Executor& disk_;
    Scheduler& scheduler_;
    std::filesystem::path folder_;
    std::shared_ptr<Recording> recording_;  // shared with the task that starts or finishes it
};

}  // namespace quorvi
