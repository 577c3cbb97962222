#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/pulse/PulseAudioInput.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {

// A program that records the microphone of one sound server, with its own main thread loop.
class MicrophoneUser {
public:
    explicit MicrophoneUser(const std::string& server) : connection(scheduler, server) {
        until(scheduler, [this] { return connection.hasMicrophone().has_value(); });
    }

    // Asks for a recording without waiting for it.
    Running<void>& begin(const std::filesystem::path& file, std::stop_token stop = {}) {
        ends.clear();
        recording.reset();
        capture = input.makeCapture();
        capture->onEnded = [this](CaptureEnd end) { ends.push_back(end); };
        return recording.emplace(capture->record(file, {}, std::move(stop)));
    }
    // True when the recording runs; otherwise `error` says why not.
    bool record(const std::filesystem::path& file) { return succeeds(begin(file)); }
    // True when the file is whole; otherwise `error` says why not.
    bool stop() {
        capture->stop();
        const Running<void> finishing(capture->finished());
        return succeeds(finishing);
    }
    bool waitForEnd() {
        return until(scheduler, [this] { return !ends.empty(); });
    }
    bool waitForMicrophone(bool there) {
        return until(scheduler, [&] { return connection.hasMicrophone() == there; });
    }
    bool waitForLevel(float decibels) {
        return until(scheduler, [&] { return capture->averagePower() > decibels; });
    }

    LoopScheduler scheduler;
    PulseConnection connection;
    PulseAudioInput input{connection, scheduler};
    std::unique_ptr<AudioCapture> capture;
    std::optional<Running<void>> recording;  // its start
    std::string error;
    std::vector<CaptureEnd> ends;

private:
    bool succeeds(const Running<void>& running) {
        await(scheduler, running);
        error = running.failure();
        return running.value().has_value();
    }
};

}  // namespace quorvi::test
