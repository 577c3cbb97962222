#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/LoopScheduler.h"
#include "Quorvi/platform/linux/PulseAudioInput.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/async/TaskScope.h"
#include "tests/linux/support/SoundServer.h"

namespace quorvi::testing {

// A program that records the microphone of one sound server, with its own main thread loop.
class MicrophoneUser {
public:
    static constexpr auto limit = std::chrono::seconds(30);

    explicit MicrophoneUser(const std::string& server) : connection(scheduler, server) {
        scheduler.runUntil([this] { return connection.hasMicrophone().has_value(); }, limit);
    }

    // True when the recording runs; otherwise `error` says why not.
    bool record(const std::filesystem::path& file) {
        begin(file);
        scheduler.runUntil([this] { return running || error; }, limit);
        return running;
    }
    // Asks for a recording without waiting for it.
    TaskHandle begin(const std::filesystem::path& file) {
        running = complete = cancelled = false;
        error.reset();
        ends.clear();
        capture = input.makeCapture();
        capture->onEnded = [this](CaptureEnd end) { ends.push_back(end); };
        return scope.start([this, file](std::stop_token stop) { return run(file, stop); });
    }
    // True when the file is whole; otherwise `error` says why not.
    bool stop() {
        capture->stop();
        scope.start([this](std::stop_token) { return finish(); });
        scheduler.runUntil([this] { return complete || error; }, limit);
        return complete;
    }
    bool waitForEnd() {
        return scheduler.runUntil([this] { return !ends.empty(); }, limit);
    }
    bool waitForMicrophone(bool there) {
        return scheduler.runUntil([&] { return connection.hasMicrophone() == there; }, limit);
    }

    LoopScheduler scheduler;
    PulseConnection connection;
    PulseAudioInput input{connection, scheduler};
    std::unique_ptr<AudioCapture> capture;
    bool running = false;
    bool complete = false;
    bool cancelled = false;
    std::optional<std::string> error;
    std::vector<CaptureEnd> ends;
    TaskScope scope{scheduler};

private:
    Task<void> run(std::filesystem::path file, std::stop_token stop) {
        auto recording = capture->record(file, {}, stop);
        try {
            co_await recording;
            running = true;
        } catch (const Cancelled&) {
            cancelled = true;
        } catch (const std::exception& failure) {
            error = failure.what();
        }
    }
    Task<void> finish() {
        auto whole = capture->finished();
        try {
            co_await whole;
            complete = true;
        } catch (const std::exception& failure) {
            error = failure.what();
        }
    }
};

}  // namespace quorvi::testing
