#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/SoundOutput.h"

namespace quorvi::test {

// Records the operations of its clips, which are numbered from 1 in the order of loading. Outlives
// them.
class FakeSoundOutput : public SoundOutput {
public:
    std::vector<std::string> journal;  // "play 1 at 0.5", "stop 1"
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

}  // namespace quorvi::test
