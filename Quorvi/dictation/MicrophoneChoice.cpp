#include "Quorvi/dictation/MicrophoneChoice.h"

#include <algorithm>
#include <utility>

namespace quorvi {

double meterLevel(float power) {
    return std::clamp((static_cast<double>(power) + 55) / 50, 0.0, 1.0);
}

MicrophoneChoice::MicrophoneChoice(Settings& settings, AudioInput& input)
    : settings_(settings), input_(input) {
    choiceObserver_ = settings_.onChange({&setting::microphone}, [this] { follow(); });
    inputObserver_ = input_.microphonesChanged().subscribe([this] {
        follow();
        if (onChange) onChange();
    });
    follow();
}

Microphone MicrophoneChoice::chosen() const {
    return {settings_.get(setting::microphone), settings_.get(setting::microphoneDescription)};
}

bool MicrophoneChoice::isMissing() const {
    const auto name = chosen().name;
    const auto microphones = all();
    return !name.empty() && !microphones.empty() &&
           std::ranges::find(microphones, name, &Microphone::name) == microphones.end();
}

std::optional<Microphone> MicrophoneChoice::used() const {
    const auto microphones = all();
    if (microphones.empty()) return std::nullopt;
    const auto found = std::ranges::find(microphones, chosen().name, &Microphone::name);
    return found == microphones.end() ? microphones.front() : *found;
}

void MicrophoneChoice::choose(const Microphone& microphone) {
    settings_.set(setting::microphoneDescription, microphone.description);
    settings_.set(setting::microphone, microphone.name);
}

std::optional<Message> MicrophoneChoice::takeNews() {
    if (!isMissing() || std::exchange(hasToldMissing_, true)) return std::nullopt;
    return say::microphoneMissing(used()->description);
}

void MicrophoneChoice::follow() {
    input_.prefer(chosen().name);
    if (!isMissing()) hasToldMissing_ = false;
}

}  // namespace quorvi
