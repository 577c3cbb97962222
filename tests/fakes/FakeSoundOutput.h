#pragma once

#include <memory>
#include <vector>

#include "Quorvi/platform/SoundOutput.h"

namespace quorvi {

// Plays nothing and writes down what would have been heard. Clips may outlive the output.
class FakeSoundOutput : public SoundOutput {
public:
    struct Event {
        enum class Kind { play, stop } kind = Kind::play;
        int clip = 0;  // index into clips(), in the order of loading
        double volume = 0;

        bool operator==(const Event&) const = default;
    };

    std::unique_ptr<SoundClip> load(const Bytes& wav) override {
        journal_->clips.push_back(wav);
        return std::make_unique<Clip>(journal_, static_cast<int>(journal_->clips.size()) - 1);
    }

    const std::vector<Bytes>& clips() const { return journal_->clips; }
    const std::vector<Event>& events() const { return journal_->events; }
    void forget() { journal_->events.clear(); }

private:
    struct Journal {
        std::vector<Bytes> clips;
        std::vector<Event> events;
    };
    class Clip : public SoundClip {
    public:
        Clip(std::shared_ptr<Journal> journal, int index)
            : journal_(std::move(journal)), index_(index) {}
        void play(double volume) override {
            journal_->events.push_back({Event::Kind::play, index_, volume});
        }
        void stop() override { journal_->events.push_back({Event::Kind::stop, index_, 0}); }

    private:
        std::shared_ptr<Journal> journal_;
        int index_;
    };

    std::shared_ptr<Journal> journal_ = std::make_shared<Journal>();
};

}  // namespace quorvi
