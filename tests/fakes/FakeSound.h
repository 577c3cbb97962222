#pragma once

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/platform/SoundOutput.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/transcription/QuorviError.h"

namespace quorvi::audiofakes {

class FakeCapture;

// A microphone whose captures do what the test says.
class FakeAudioInput : public AudioInput {
public:
    explicit FakeAudioInput(Scheduler& s) : scheduler(s) {}

    std::unique_ptr<AudioCapture> makeCapture() override;
    void prepare() override { ++prepared; }

    Scheduler& scheduler;
    std::string content = "sound";                  // what a finished file holds
    std::optional<std::string> refusal;             // record() throws this
    bool startsAtOnce = true;                       // otherwise after openGate()
    std::optional<std::string> finishingFailure{};  // finished() throws this
    int prepared = 0;
    int capturing = 0;
    FakeCapture* current = nullptr;
    std::optional<Promise<void>> gate;

    void openGate() { gate->resolve(); }
};

class FakeCapture : public AudioCapture {
public:
    explicit FakeCapture(FakeAudioInput& input) : input_(input) { input_.current = this; }
    FakeCapture(const FakeCapture&) = delete;
    FakeCapture& operator=(const FakeCapture&) = delete;
    ~FakeCapture() override {
        FakeCapture::stop();
        if (input_.current == this) input_.current = nullptr;
    }

    Task<void> record(std::filesystem::path file, AudioSettings, std::stop_token stop) override {
        if (input_.refusal) throw QuorviError::message(*input_.refusal);
        std::ofstream(file) << "";
        if (!input_.startsAtOnce) {
            struct Abandoned {
                std::filesystem::path file;
                ~Abandoned() {
                    if (!file.empty()) std::filesystem::remove(file);
                }
            } abandoned{file};
            input_.gate.emplace(input_.scheduler);
            auto opened = input_.gate->future(stop);
            co_await opened;
            abandoned.file.clear();
        }
        file_ = file;
        running_ = true;
        ++input_.capturing;
    }
    void stop() override {
        if (std::exchange(running_, false)) --input_.capturing;
    }
    Task<void> finished() override {
        auto turn = sleepFor(input_.scheduler, Duration::zero(), {});
        co_await turn;
        if (input_.finishingFailure) throw QuorviError::message(*input_.finishingFailure);
        std::ofstream(file_) << input_.content;
    }
    double currentTime() const override { return 1.5; }
    float averagePower() override { return -20; }

    void end(CaptureEnd reason) {
        if (const auto told = onEnded) told(reason);
    }

private:
    FakeAudioInput& input_;
    std::filesystem::path file_;
    bool running_ = false;
};

inline std::unique_ptr<AudioCapture> FakeAudioInput::makeCapture() {
    return std::make_unique<FakeCapture>(*this);
}

// Writes down what its clips are told.
class FakeSoundOutput : public SoundOutput {
public:
    std::vector<std::string> journal;
    std::vector<Bytes> loaded;

    std::unique_ptr<SoundClip> load(const Bytes& wav) override {
        loaded.push_back(wav);
        return std::make_unique<Clip>(*this, std::to_string(loaded.size()));
    }

private:
    struct Clip : SoundClip {
        Clip(FakeSoundOutput& o, std::string n) : output(o), name(std::move(n)) {}
        void play(double volume) override {
            output.journal.push_back("play " + name + " at " + std::to_string(volume).substr(0, 3));
        }
        void stop() override { output.journal.push_back("stop " + name); }
        FakeSoundOutput& output;
        std::string name;
    };
};

}  // namespace quorvi::audiofakes
