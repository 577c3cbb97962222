#include "Quorvi/transcription/SpeechServiceChoice.h"

#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/transcription/ServiceAddress.h"

namespace quorvi {

SpeechServiceChoice::SpeechServiceChoice(Settings& settings, std::string fixedAddress)
    : settings_(settings), fixedAddress_(std::move(fixedAddress)) {}

SpeechServiceKind SpeechServiceChoice::kind() const {
    if (isFixed())
        return fixedAddress_ == defaultServiceAddress ? SpeechServiceKind::openAI
                                                      : SpeechServiceKind::other;
    // Earlier versions stored only the address.
    if (!settings_.isStored(setting::serviceKind) && !otherAddress().empty())
        return SpeechServiceKind::other;
    return settings_.get(setting::serviceKind);
}

void SpeechServiceChoice::choose(SpeechServiceKind kind) {
    // The default is stored only in place of another value.
    if (!settings_.isStored(setting::serviceKind) && !otherAddress().empty())
        settings_.set(setting::serviceKind, SpeechServiceKind::other);
    settings_.set(setting::serviceKind, kind);
}

void SpeechServiceChoice::setOtherAddress(const std::string& address) {
    settings_.set(setting::service, std::string(text::trimmed(address)));
}

std::string SpeechServiceChoice::address() const {
    if (isFixed()) return fixedAddress_;
    switch (kind()) {
        case SpeechServiceKind::openAI:
            return std::string(defaultServiceAddress);
        case SpeechServiceKind::other:
            // An empty one would mean the OpenAI API, which has not been chosen.
            if (otherAddress().empty()) throw QuorviError::message(say::serviceAddressMissing());
            return serviceAddress(otherAddress());
        case SpeechServiceKind::offline:
            break;
    }
    return {};
}

std::string SpeechServiceChoice::validAddress() const {
    try {
        return address();
    } catch (const QuorviError&) {
        return {};
    }
}

bool SpeechServiceChoice::takesKey() const {
    return usesMainKey() || (kind() == SpeechServiceKind::other && otherTakesKey());
}

Subscription SpeechServiceChoice::onChange(std::function<void()> observer) const {
    return settings_.onChange({&setting::serviceKind, &setting::service, &setting::serviceModel,
                               &setting::serviceTakesKey},
                              std::move(observer));
}

}  // namespace quorvi
