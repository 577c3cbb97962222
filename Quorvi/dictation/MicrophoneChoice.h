#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/settings/Settings.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// A level in dB relative to full scale as a meter shows it, 0 to 1.
double meterLevel(float power);

// The microphone that the user has chosen, and the one that is used: while the chosen one is not
// there, the system's default. Main thread; the settings and the input outlive it.
class MicrophoneChoice {
public:
    MicrophoneChoice(Settings& settings, AudioInput& input);

    // Those that can be chosen, the system's default first.
    std::vector<Microphone> all() const { return input_.microphones(); }
    // The stored choice, there or not. Its name is empty for the system's default.
    Microphone chosen() const;
    // The sound server has microphones, but not the chosen one.
    bool isMissing() const;
    // The one that the next recording takes; nullopt if there is none.
    std::optional<Microphone> used() const;

    void choose(const Microphone& microphone);

    // Listens to the one that is used now.
    std::unique_ptr<AudioLevel> makeLevel() { return input_.makeLevel(); }

    // What a dictation says that begins now without the chosen microphone; nullopt if there is
    // nothing to say, or it was said since the microphone went missing.
    std::optional<Message> takeNews();

    // Called after a change of the microphones. The settings tell that of the choice.
    std::function<void()> onChange;

private:
    void follow();

    Settings& settings_;
    AudioInput& input_;
    bool hasToldMissing_ = false;
    Subscription choiceObserver_;
    Subscription inputObserver_;
};

}  // namespace quorvi
