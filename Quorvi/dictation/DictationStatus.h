#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <utility>

#include "Quorvi/dictation/DictationStage.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// What the interface shows of a dictation, or of the insertion test: the stage, one sentence, and
// whether the overlay is there and offers the text for copying, or another try. Only holds this;
// the session, the test and the controller write it. Main thread; owned by the controller.
class DictationStatus {
public:
    explicit DictationStatus(Scheduler& scheduler) : scheduler_(scheduler) {}

    DictationStage stage() const { return stage_; }
    const Message& message() const { return message_; }
    bool offersCopy() const { return offers_ == Offer::copy; }
    bool offersRetry() const { return offers_ == Offer::retry; }

    // Called after a change of the above.
    std::function<void()> onChange;
    // Called whenever the overlay is to be shown, or shown afresh, and when it is to be hidden.
    std::function<void()> onShowOverlay;
    std::function<void()> onHideOverlay;

    // Enters a stage whose overlay offers nothing.
    void enter(DictationStage stage, Message message) {
        set(stage, std::move(message), Offer::nothing);
    }
    // Enters a stage whose overlay offers the text for copying.
    void offerCopy(DictationStage stage, Message message) {
        set(stage, std::move(message), Offer::copy);
    }
    // Says that the dictation has failed, and offers another try.
    void offerRetry(Message message) {
        set(DictationStage::failure, std::move(message), Offer::retry);
    }
    // Ends either offer.
    void withdrawOffer();
    // Replaces the sentence only.
    void say(Message message);

    void showOverlay() {
        if (onShowOverlay) onShowOverlay();
    }
    void showOverlay(std::chrono::seconds time) {
        showOverlay();
        hideOverlayAfter(time);
    }
    void hideOverlayAfter(std::chrono::seconds time) {
        hiding_ = scheduler_.after(time, [this] { hideOverlay(); });
    }
    void hideOverlay() {
        if (onHideOverlay) onHideOverlay();
    }
    // Lets the overlay stay for as long as the stage lasts.
    void keepOverlay() { hiding_.cancel(); }

private:
    enum class Offer : std::uint8_t { nothing, copy, retry };
    void set(DictationStage stage, Message message, Offer offer);
    void changed() {
        if (onChange) onChange();
    }

    Scheduler& scheduler_;
    DictationStage stage_ = DictationStage::idle;
    Message message_ = say::clickATextField();
    Offer offers_ = Offer::nothing;
    Timer hiding_;
};

}  // namespace quorvi
