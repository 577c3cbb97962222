#include "Quorvi/dictation/AudioRecorder.h"

#include <system_error>
#include <utility>

#include "Quorvi/dictation/RecordingFolder.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

namespace {

constexpr float silence = -160;

struct ForwardStop {
    std::stop_source target;
    void operator()() { target.request_stop(); }
};

QuorviError noRecording() {
    return QuorviError::message("No recording is available.");
}

}  // namespace

// One recording from start() to its deletion. The recorder and the task that works on the recording
// share it; when the last of them lets go, the capture ends and the file is gone. It has a name
// only while it begins: the file exists before record() completes or not at all, so a deletion
// queued after that can't miss it.
struct AudioRecorder::Recording {
    enum class Phase { starting, capturing, stopped, finishing };

    Recording(AudioRecorder& recorder, std::filesystem::path path)
        : owner(&recorder), disk(recorder.disk_), file(std::move(path)) {}
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording() {
        capture.reset();
        disk.run([path = std::move(file)] {
            std::error_code ignored;
            std::filesystem::remove(path, ignored);
        });
    }

    AudioRecorder* owner;  // null once the recorder has given this recording up
    Executor& disk;
    std::filesystem::path file;
    std::shared_ptr<const Descriptor> content;
    std::unique_ptr<AudioCapture> capture;
    Phase phase = Phase::starting;
    std::stop_source giveUp;  // ends the start() or finish() under way
};

// Gives the recording up when a task ends early, be it by an exception or because its frame was
// destroyed where it waited.
class AudioRecorder::Guard {
public:
    explicit Guard(std::shared_ptr<Recording> recording) : recording_(std::move(recording)) {}
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    ~Guard() {
        if (recording_ && recording_->owner) recording_->owner->discard();
    }
    void dismiss() { recording_.reset(); }

private:
    std::shared_ptr<Recording> recording_;
};

AudioRecorder::AudioRecorder(AudioInput& input, Executor& disk, Scheduler& scheduler,
                             std::filesystem::path folder)
    : input_(input), disk_(disk), scheduler_(scheduler), folder_(std::move(folder)) {}

AudioRecorder::~AudioRecorder() {
    onRecordingChanged = nullptr;
    discard();
}

Task<void> AudioRecorder::start(std::stop_token stop) {
    discard();
    throwIfStopped(stop);
    const auto recording = std::make_shared<Recording>(*this, folder_ / (newUuid() + ".m4a"));
    recording_ = recording;
    Guard guard(recording);
    const std::stop_callback forward(std::move(stop), ForwardStop{recording->giveUp});
    const auto giveUp = recording->giveUp.get_token();

    auto folder = inBackground(
        disk_, scheduler_, [path = folder_] { recordings::prepareFolder(path); }, giveUp);
    co_await folder;
    throwIfStopped(giveUp);
    recording->capture = input_.makeCapture();
    recording->capture->onEnded = [this](CaptureEnd end) { captureEnded(end); };
    auto running = recording->capture->record(recording->file, AudioSettings{}, giveUp);
    co_await running;
    throwIfStopped(giveUp);
    auto takingOut = inBackground(
        disk_, scheduler_, [path = recording->file] { return recordings::takeOut(path); }, giveUp);
    recording->content = co_await takingOut;
    throwIfStopped(giveUp);

    guard.dismiss();
    recording->phase = Recording::Phase::capturing;
    if (const auto told = onRecordingChanged) told(true);
}

Task<Bytes> AudioRecorder::finish(std::stop_token stop) {
    stopCapture();
    const auto recording = recording_;
    if (!recording || recording->phase == Recording::Phase::finishing) throw noRecording();
    Guard guard(recording);
    if (recording->phase != Recording::Phase::stopped) throw noRecording();
    recording->phase = Recording::Phase::finishing;
    const std::stop_callback forward(std::move(stop), ForwardStop{recording->giveUp});
    const auto giveUp = recording->giveUp.get_token();

    throwIfStopped(giveUp);
    auto whole = recording->capture->finished();
    co_await whole;
    throwIfStopped(giveUp);
    auto content = inBackground(
        disk_, scheduler_, [file = recording->content] { return recordings::read(*file); }, giveUp);
    Bytes bytes = co_await content;
    throwIfStopped(giveUp);
    co_return bytes;
}

void AudioRecorder::stopCapture() {
    const auto recording = recording_;
    if (!recording) return;
    if (recording->phase == Recording::Phase::starting) recording->giveUp.request_stop();
    if (recording->phase != Recording::Phase::capturing) return;
    recording->phase = Recording::Phase::stopped;
    recording->capture->onEnded = nullptr;
    recording->capture->stop();
    if (const auto told = onRecordingChanged) told(false);
}

void AudioRecorder::discard() {
    const auto recording = recording_;
    if (!recording) return;
    stopCapture();
    // Whoever was told of the stop may have begun another recording.
    if (recording_ == recording) recording_.reset();
    recording->owner = nullptr;
    if (recording->capture) recording->capture->onEnded = nullptr;
    recording->giveUp.request_stop();
}

double AudioRecorder::duration() const {
    return recording_ && recording_->capture ? recording_->capture->currentTime() : 0;
}

float AudioRecorder::meter() {
    return recording_ && recording_->capture ? recording_->capture->averagePower() : silence;
}

void AudioRecorder::prepare() {
    input_.prepare();
}

void AudioRecorder::removeStaleRecordings() {
    disk_.run([folder = folder_] { recordings::removeAll(folder); });
}

void AudioRecorder::captureEnded(CaptureEnd end) {
    if (const auto told = onFailure)
        told(end == CaptureEnd::encodingError
                 ? "Recording stopped unexpectedly. Check your microphone and try again."
                 : "Recording stopped unexpectedly. Please try again.");
}

}  // namespace quorvi
