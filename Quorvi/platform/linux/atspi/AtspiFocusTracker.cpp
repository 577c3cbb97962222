#include "Quorvi/platform/linux/atspi/AtspiFocusTracker.h"

#include <algorithm>

namespace quorvi::atspi {
namespace {

// An application may leave FOCUSED on several objects and withdraw the latest; the earlier ones are
// then candidates again.
constexpr std::size_t rememberedObjects = 4;

}  // namespace

void AtspiFocusTracker::focusChanged(const ObjectRef& object, bool focused) {
    std::lock_guard lock(mutex_);
    auto& objects = peers_[object.bus].focused;
    objects.erase(std::remove(objects.begin(), objects.end(), object), objects.end());
    if (!focused) return;
    objects.push_front(object);
    if (objects.size() > rememberedObjects) objects.pop_back();
}

void AtspiFocusTracker::found(const ObjectRef& object) {
    std::lock_guard lock(mutex_);
    auto& objects = peers_[object.bus].focused;
    if (std::find(objects.begin(), objects.end(), object) != objects.end()) return;
    if (objects.size() == rememberedObjects) objects.pop_back();
    objects.push_back(object);
}

void AtspiFocusTracker::windowActiveChanged(const ObjectRef& window, bool active) {
    std::lock_guard lock(mutex_);
    auto& peer = peers_[window.bus];
    if (active) {
        peer.activeWindow = window;
        active_ = window.bus;
    } else if (peer.activeWindow == window) {
        peer.activeWindow.reset();
        if (active_ == window.bus) active_.reset();
    }
}

void AtspiFocusTracker::peerLeft(const std::string& bus) {
    std::lock_guard lock(mutex_);
    peers_.erase(bus);
    if (active_ == bus) active_.reset();
}

void AtspiFocusTracker::clear() {
    std::lock_guard lock(mutex_);
    peers_.clear();
    active_.reset();
}

std::vector<ObjectRef> AtspiFocusTracker::focusedOf(const std::string& bus) const {
    std::lock_guard lock(mutex_);
    const auto found = peers_.find(bus);
    if (found == peers_.end()) return {};
    return {found->second.focused.begin(), found->second.focused.end()};
}

std::optional<ObjectRef> AtspiFocusTracker::activeWindowOf(const std::string& bus) const {
    std::lock_guard lock(mutex_);
    const auto found = peers_.find(bus);
    return found == peers_.end() ? std::nullopt : found->second.activeWindow;
}

std::optional<std::string> AtspiFocusTracker::activeApplication() const {
    std::lock_guard lock(mutex_);
    return active_;
}

}  // namespace quorvi::atspi
