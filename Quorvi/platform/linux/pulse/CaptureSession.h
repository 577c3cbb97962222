#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

class AacFileWriter;
class PulseRecordStream;
class SpareAacWriter;

// The work of one recording: the sound thread fills a buffer from the very first sample, the
// encoder thread empties it into the file. Shared by the jobs on those threads, so that it lives
// until the last of them is done. Every path ends with a job of the encoder that completes the file
// or removes it.
class CaptureSession : public std::enable_shared_from_this<CaptureSession> {
public:
    CaptureSession(PulseConnection& connection, Scheduler& scheduler, Executor& encoder,
                   std::shared_ptr<SpareAacWriter> spare);
    ~CaptureSession();

    // Main thread.
    void begin(std::filesystem::path file, AudioSettings settings);
    void stop();
    // Ends a recording that never came to run and removes its file.
    void giveUp();
    // Ends the recording with what has arrived. After the sound thread has run this, nothing more
    // is asked of the encoder.
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
    double squares_ = 0;  // of the samples since the last averagePower()
    std::int64_t measured_ = 0;
    float lastPower_ = -160;
};

}  // namespace quorvi
