#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/platform/linux/pulse/PowerMeter.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

class AacFileWriter;
class PulseRecordStream;
class SpareAacWriter;

// One recording: the sound thread fills a buffer from the first sample on, the encoder thread
// writes it to the file. Shared by the jobs on those threads, so it lives until the last one has
// ended. The last job is always one of the encoder, which completes or removes the file.
class CaptureSession : public std::enable_shared_from_this<CaptureSession> {
public:
    CaptureSession(PulseConnection& connection, Scheduler& scheduler, Executor& encoder,
                   std::shared_ptr<SpareAacWriter> spare, std::string microphone);
    ~CaptureSession();

    // Main thread.
    void begin(std::filesystem::path file, AudioSettings settings);
    void stop();
    // Ends a recording that has not started and removes its file.
    void giveUp();
    // Ends the recording with the samples that have arrived. The encoder gets no more after the
    // sound thread has run this.
    void endNow();
    std::function<void(CaptureEnd)> onEnded;

    Promise<void> started;   // the file is open and the first samples are there
    Promise<void> finished;  // the file is complete
    Promise<void> removed;   // the file is gone, after giveUp()

    // Any thread.
    std::int64_t capturedSamples() const;
    float averagePower();

private:
    void openFile(const std::filesystem::path& file, AudioSettings settings);
    void openStream(AudioSettings settings);
    void take(std::span<const std::int16_t> samples);
    void streamEnded();
    void closeStream();
    void finishFile();
    void encode();
    void encodingFailed();
    void complete();
    void removeFile();
    void reportEnd(CaptureEnd end);
    void partStarted();
    bool isStarted() const;

    PulseConnection& connection_;
    Scheduler& scheduler_;
    Executor& encoder_;
    std::shared_ptr<SpareAacWriter> spare_;  // encoder thread
    const std::string microphone_;           // the preferred one

    // Sound thread.
    std::shared_ptr<PulseRecordStream> stream_;
    bool stopping_ = false;
    bool finishing_ = false;

    // Encoder thread.
    std::unique_ptr<AacFileWriter> writer_;
    std::filesystem::path file_;  // empty unless this session created it
    std::vector<std::int16_t> encoding_;
    std::exception_ptr failure_;

    // Any thread, under the mutex, which is held for a copy at most.
    mutable std::mutex mutex_;
    std::vector<std::int16_t> captured_;
    bool encodeQueued_ = false;
    int partsToStart_ = 2;  // the file and the first samples
    std::int64_t capturedSamples_ = 0;
    PowerMeter power_;
};

}  // namespace quorvi
