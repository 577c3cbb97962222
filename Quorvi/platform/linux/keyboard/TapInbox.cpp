#include "Quorvi/platform/linux/keyboard/TapInbox.h"

#include <utility>

namespace quorvi {

void TapInbox::add(const TapEvent& event) {
    {
        std::lock_guard lock(mutex_);
        if (muted_) return;
        events_.push_back(event);
        if (events_.size() > 1) return;  // a delivery is on its way
    }
    scheduler_.post([weak = weak_from_this()] {
        if (const auto inbox = weak.lock()) inbox->deliver();
    });
}

void TapInbox::deliver() {
    for (const auto& event : take()) {
        const auto current = handler_;
        if (current && !isMuted()) (*current)(event);
    }
}

void TapInbox::mute() {
    std::lock_guard lock(mutex_);
    muted_ = true;
    events_.clear();
}

void TapInbox::unmute() {
    std::lock_guard lock(mutex_);
    muted_ = false;
}

bool TapInbox::isMuted() {
    std::lock_guard lock(mutex_);
    return muted_;
}

std::vector<TapEvent> TapInbox::take() {
    std::lock_guard lock(mutex_);
    return std::exchange(events_, {});
}

}  // namespace quorvi
