#include "Quorvi/platform/linux/pulse/CaptureSession.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "Quorvi/platform/linux/pulse/AacFileWriter.h"
#include "Quorvi/platform/linux/pulse/PulseRecordStream.h"
#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

// The encoder's batch; waking its thread for less gains nothing.
constexpr std::size_t encoderFrame = 1024;

std::exception_ptr microphoneFailed() {
    return std::make_exception_ptr(QuorviError::message(say::microphoneCouldNotStart()));
}

}  // namespace

CaptureSession::CaptureSession(PulseConnection& connection, Scheduler& scheduler, Executor& encoder,
                               std::shared_ptr<SpareAacWriter> spare, std::string microphone)
    : started(scheduler),
      finished(scheduler),
      removed(scheduler),
      connection_(connection),
      scheduler_(scheduler),
      encoder_(encoder),
      spare_(std::move(spare)),
      microphone_(std::move(microphone)) {}

CaptureSession::~CaptureSession() = default;

void CaptureSession::begin(std::filesystem::path file, AudioSettings settings) {
    connection_.run([self = shared_from_this(), settings] { self->openStream(settings); });
    encoder_.run([self = shared_from_this(), file = std::move(file), settings] {
        self->openFile(file, settings);
    });
}

void CaptureSession::stop() {
    connection_.run([self = shared_from_this()] {
        self->stopping_ = true;
        if (self->stream_) self->stream_->drain();
    });
}

void CaptureSession::giveUp() {
    connection_.run([self = shared_from_this()] {
        self->stopping_ = true;
        self->finishing_ = true;
        self->closeStream();
        self->encoder_.run([self] { self->removeFile(); });
    });
}

void CaptureSession::endNow() {
    connection_.run([self = shared_from_this()] {
        self->stopping_ = true;
        self->closeStream();
        self->finishFile();
    });
}

// Sound thread.

void CaptureSession::openStream(AudioSettings settings) {
    // The stream keeps its session until it has ended or is closed.
    PulseRecordStream::Events events;
    events.samples = [self = shared_from_this()](std::span<const std::int16_t> samples) {
        self->take(samples);
    };
    events.ended = [self = shared_from_this()] { self->streamEnded(); };
    stream_ = std::make_shared<PulseRecordStream>(
        connection_, PulseRecordStream::Use{.name = "Dictation", .microphone = microphone_},
        settings, std::move(events));
    stream_->begin();
}

void CaptureSession::take(std::span<const std::int16_t> samples) {
    const double squares = PowerMeter::squares(samples);
    bool first = false;
    bool wake = false;
    {
        std::lock_guard lock(mutex_);
        first = capturedSamples_ == 0 && !samples.empty();
        captured_.insert(captured_.end(), samples.begin(), samples.end());
        capturedSamples_ += static_cast<std::int64_t>(samples.size());
        power_.add(squares, samples.size());
        if (captured_.size() >= encoderFrame) wake = !std::exchange(encodeQueued_, true);
    }
    if (first) partStarted();
    if (wake) encoder_.run([self = shared_from_this()] { self->encode(); });
}

void CaptureSession::streamEnded() {
    closeStream();
    // A recording that hasn't started is abandoned by its waiting coroutine.
    if (!stopping_ && !isStarted()) return started.reject(microphoneFailed());
    if (!stopping_) reportEnd(CaptureEnd::deviceLost);
    finishFile();
}

// The stream may be running a callback and goes a turn later.
void CaptureSession::closeStream() {
    if (stream_) connection_.run([stream = std::exchange(stream_, nullptr)] {});
}

void CaptureSession::finishFile() {
    if (std::exchange(finishing_, true)) return;
    encoder_.run([self = shared_from_this()] { self->complete(); });
}

// Encoder thread.

void CaptureSession::openFile(const std::filesystem::path& file, AudioSettings settings) {
    try {
        writer_ = spare_->take(settings);
        writer_->open(file);
        file_ = file;
        partStarted();
    } catch (const std::exception&) {
        failure_ = std::current_exception();
        started.reject(failure_);
    }
}

void CaptureSession::encode() {
    {
        std::lock_guard lock(mutex_);
        encoding_.swap(captured_);
        captured_.clear();
        encodeQueued_ = false;
    }
    if (failure_ || !writer_) return;
    try {
        writer_->write(encoding_);
    } catch (const std::exception&) {
        failure_ = std::current_exception();
        encodingFailed();
    }
}

void CaptureSession::encodingFailed() {
    reportEnd(CaptureEnd::encodingError);
    endNow();
}

void CaptureSession::complete() {
    encode();
    try {
        if (!failure_) writer_->finish();
    } catch (const std::exception&) {
        failure_ = std::current_exception();
    }
    writer_.reset();
    failure_ ? finished.reject(failure_) : finished.resolve();
    spare_->prepare();
}

void CaptureSession::removeFile() {
    writer_.reset();
    std::error_code ignored;
    if (!file_.empty()) std::filesystem::remove(file_, ignored);
    removed.resolve();
}

// Any thread.

void CaptureSession::partStarted() {
    {
        std::lock_guard lock(mutex_);
        if (--partsToStart_ > 0) return;
    }
    started.resolve();
}

bool CaptureSession::isStarted() const {
    std::lock_guard lock(mutex_);
    return partsToStart_ == 0;
}

void CaptureSession::reportEnd(CaptureEnd end) {
    scheduler_.post([self = shared_from_this(), end] {
        if (const auto told = self->onEnded) told(end);
    });
}

std::int64_t CaptureSession::capturedSamples() const {
    std::lock_guard lock(mutex_);
    return capturedSamples_;
}

float CaptureSession::averagePower() {
    std::lock_guard lock(mutex_);
    return power_.average();
}

}  // namespace quorvi
