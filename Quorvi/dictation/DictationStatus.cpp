#include "Quorvi/dictation/DictationStatus.h"

namespace quorvi {

void DictationStatus::set(DictationStage stage, Message message, Offer offer) {
    stage_ = stage;
    message_ = std::move(message);
    offers_ = offer;
    changed();
}

void DictationStatus::withdrawOffer() {
    if (std::exchange(offers_, Offer::nothing) != Offer::nothing) changed();
}

void DictationStatus::say(Message message) {
    if (message == message_) return;
    message_ = std::move(message);
    changed();
}

}  // namespace quorvi
