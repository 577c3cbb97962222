#include "Quorvi/dictation/AudioRecorder.h"

#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

constexpr float silence = -160;

struct ForwardStop {
    std::stop_source target;
    void operator()() { target.request_stop(); }
};

QuorviError noRecording() {
    return QuorviError::message(say::noRecording());
}

}  // namespace

// One recording from start() to its deletion. The recorder and the task that works on the recording
// share it; when the last of them releases it, the capture ends and the file is deleted. The file
// has a name only while the recording begins. It is created before record() completes or never, so
// a deletion queued after that can't miss it.
struct AudioRecorder::Recording {
    enum class Phase { starting, capturing, stopped, finishing };

    explicit Recording(AudioRecorder& recorder)
        : owner(&recorder),
          disk(recorder.disk_),
          files(recorder.files_),
          file(recorder.files_.newFile()) {}
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording() {
        capture.reset();
        disk.run([&files = files, path = std::move(file)] { files.remove(path); });
    }

    AudioRecorder* owner;  // null once the recorder has given this recording up
    Executor& disk;
    RecordingFiles& files;
    std::filesystem::path file;
    std::shared_ptr<const OpenRecording> content;
    std::unique_ptr<AudioCapture> capture;
    Phase phase = Phase::starting;
    std::stop_source giveUp;  // ends the start() or finish() under way
};

// Gives the recording up when a task ends early: by an exception, or because its frame is destroyed
// while it waits.
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

AudioRecorder::AudioRecorder(AudioInput& input, RecordingFiles& files, Executor& disk,
                             Scheduler& scheduler)
    : input_(input), files_(files), disk_(disk), scheduler_(scheduler) {}

AudioRecorder::~AudioRecorder() {
    onRecordingChanged = nullptr;
    discard();
}

Task<void> AudioRecorder::start(std::stop_token stop) {
    discard();
    throwIfStopped(stop);
    const auto recording = std::make_shared<Recording>(*this);
    recording_ = recording;
    Guard guard(recording);
    const std::stop_callback forward(std::move(stop), ForwardStop{recording->giveUp});
    const auto giveUp = recording->giveUp.get_token();

    auto folder = inBackground(disk_, scheduler_, [&files = files_] { files.prepare(); }, giveUp);
    co_await folder;
    throwIfStopped(giveUp);
    recording->capture = input_.makeCapture();
    recording->capture->onEnded = [this](CaptureEnd end) { captureEnded(end); };
    auto running = recording->capture->record(recording->file, AudioSettings{}, giveUp);
    co_await running;
    throwIfStopped(giveUp);
    auto takingOut = inBackground(
        disk_, scheduler_,
        [&files = files_, path = recording->file] { return files.takeOut(path); }, giveUp);
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
        disk_, scheduler_, [file = recording->content] { return file->read(); }, giveUp);
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
    // onRecordingChanged may have begun another recording.
    if (recording_ == recording) recording_.reset();
    recording->owner = nullptr;
    if (recording->capture) recording->capture->onEnded = nullptr;
    recording->giveUp.request_stop();
}

bool AudioRecorder::isCapturing() const {
    return recording_ && recording_->phase == Recording::Phase::capturing;
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
    disk_.run([&files = files_] { files.removeLeftOver(); });
}

void AudioRecorder::captureEnded(CaptureEnd end) {
    if (const auto told = onFailure)
        told(end == CaptureEnd::encodingError ? say::recordingStoppedCheckMicrophone()
                                              : say::recordingStopped());
}

}  // namespace quorvi
