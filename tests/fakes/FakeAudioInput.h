#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "Quorvi/platform/AudioCapture.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"
#include "tests/fakes/FakeRecordingFiles.h"

namespace quorvi::test {

// A microphone on the scheduler's clock, which records into files in memory. Its settings apply to
// existing captures, too. Outlives its captures.
class FakeAudioInput : public AudioInput {
public:
    FakeAudioInput(Scheduler& scheduler, FakeRecordingFiles& files)
        : scheduler_(scheduler), files_(files) {}

    std::vector<Microphone> microphones() const override { return sources_; }
    Observable& microphonesChanged() override { return sourcesChanged_; }
    void prefer(std::string name) override { preferred = std::move(name); }
    std::unique_ptr<AudioLevel> makeLevel() override { return std::make_unique<Level>(*this); }
    std::unique_ptr<AudioCapture> makeCapture() override {
        ++captures;
        return std::make_unique<Capture>(*this);
    }
    void prepare() override {}

    void setMicrophones(std::vector<Microphone> sources) {
        sources_ = std::move(sources);
        sourcesChanged_.notify();
    }
    std::string preferred;
    int levelsOpen = 0;

    // The level in dB at a time since the capture began.
    std::function<float(double seconds)> levels = [](double) { return -20.0F; };
    std::optional<Message> recordFailure;  // record() throws it
    std::optional<Message> finishFailure;  // finished() throws it
    bool startsAtOnce = true;              // otherwise a start ends only by being cancelled
    bool isLostAtOnce = false;             // a capture ends in the turn after its start

    bool isCapturing() const { return active_ != nullptr; }
    // Ends the capture that is recording, as a lost device or a full disk does.
    void end(CaptureEnd reason) {
        if (!active_) return;
        const auto told = active_->onEnded;  // the owner may destroy the capture inside
        active_->stop();
        if (told) told(reason);
    }
    int captures = 0;  // made so far

private:
    class Level : public AudioLevel {
    public:
        explicit Level(FakeAudioInput& input) : input_(input) { ++input_.levelsOpen; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() override { --input_.levelsOpen; }
        float averagePower() override { return input_.levels(0); }

    private:
        FakeAudioInput& input_;
    };

    class Capture : public AudioCapture {
    public:
        explicit Capture(FakeAudioInput& input) : input_(input) {}
        ~Capture() override { stop(); }

        Task<void> record(std::filesystem::path file, AudioSettings,
                          std::stop_token stop) override {
            auto turn = sleepFor(input_.scheduler_, Duration::zero(), stop);
            co_await turn;
            if (input_.recordFailure) throw QuorviError::message(*input_.recordFailure);
            struct Abandoned {
                FakeRecordingFiles& files;
                std::filesystem::path file;
                ~Abandoned() {
                    if (!file.empty()) files.remove(file);
                }
            } abandoned{input_.files_, file};
            input_.files_.named[file] = written_;
            auto opening =
                sleepFor(input_.scheduler_,
                         input_.startsAtOnce ? Duration::zero() : Duration::max() / 2, stop);
            co_await opening;
            abandoned.file.clear();
            began_ = input_.scheduler_.now();
            input_.active_ = this;
            if (input_.isLostAtOnce)
                input_.scheduler_.post([&input = input_] { input.end(CaptureEnd::deviceLost); });
        }
        void stop() override {
            if (input_.active_ != this) return;
            ended_ = input_.scheduler_.now();
            input_.active_ = nullptr;
        }
        Task<void> finished() override {
            auto turn = sleepFor(input_.scheduler_, Duration::zero(), {});
            co_await turn;
            if (input_.finishFailure) throw QuorviError::message(*input_.finishFailure);
            *written_ = "sound";
        }
        double currentTime() const override {
            const auto end = ended_.value_or(input_.scheduler_.now());
            return std::chrono::duration<double>(end - began_.value_or(end)).count();
        }
        float averagePower() override {
            return input_.active_ == this ? input_.levels(currentTime()) : -160.0F;
        }

    private:
        FakeAudioInput& input_;
        FakeRecordingFiles::Content written_ = std::make_shared<std::string>();
        std::optional<TimePoint> began_, ended_;
    };

    Scheduler& scheduler_;
    FakeRecordingFiles& files_;
    Capture* active_ = nullptr;
    std::vector<Microphone> sources_{{"built-in", "Built-in Audio"}};
    Observable sourcesChanged_;
};

}  // namespace quorvi::test
