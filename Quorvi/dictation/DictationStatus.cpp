#include "Quorvi/dictation/DictationStatus.h"

namespace quorvi {

void DictationStatus::set(DictationStage stage, Message message, bool offersCopy) {
    stage_ = stage;
    message_ = std::move(message);
    offersCopy_ = offersCopy;
    changed();
}

void DictationStatus::withdrawCopy() {
    if (std::exchange(offersCopy_, false)) changed();
}

void DictationStatus::say(Message message) {
    if (message == message_) return;
    message_ = std::move(message);
    changed();
}

}  // namespace quorvi
