#include "tests/fakes/FakeKeyEventTap.h"

#include <algorithm>
#include <map>
#include <utility>

namespace quorvi::test {

namespace {

// The flags that a held modifier key contributes; 0 for any other key.
std::uint64_t modifierFlags(KeyCode code) {
    using namespace modifierFlag;
    static const std::map<KeyCode, std::uint64_t> all{
        {keyCode::leftControl, control | leftControl},
        {keyCode::rightControl, control | rightControl},
        {keyCode::leftShift, shift | leftShift},
        {keyCode::rightShift, shift | rightShift},
        {keyCode::leftOption, option | leftOption},
        {keyCode::rightOption, option | rightOption},
        {keyCode::leftCommand, command | leftCommand},
        {keyCode::rightCommand, command | rightCommand},
        {keyCode::fn, fn}};
    const auto found = all.find(code);
    return found == all.end() ? 0 : found->second;
}

}  // namespace

bool FakeKeyEventTap::install(std::function<TapVerdict(const TapEvent&)> handler) {
    if (isRefused) return false;
    handler_ = std::move(handler);
    valid_ = enabled_ = true;
    return true;
}

void FakeKeyEventTap::remove() {
    handler_ = nullptr;
    valid_ = enabled_ = false;
    declared_.clear();
    heldBack_.clear();
}

std::uint64_t FakeKeyEventTap::flags() const {
    std::uint64_t all = 0;
    for (const auto code : keys_) all |= modifierFlags(code);
    return all;
}

TapEvent FakeKeyEventTap::keyEvent(KeyCode code, bool down) const {
    const auto type = modifierFlags(code) ? TapEventType::flagsChanged
                      : down              ? TapEventType::keyDown
                                          : TapEventType::keyUp;
    return {.type = type, .keyCode = code, .flags = flags()};
}

void FakeKeyEventTap::press(KeyCode code) {
    const bool isNew = keys_.insert(code).second;
    if (isNew || !modifierFlags(code)) deliver(keyEvent(code, true));  // modifiers don't repeat
}

void FakeKeyEventTap::release(KeyCode code) {
    if (keys_.erase(code) > 0) deliver(keyEvent(code, false));
}

void FakeKeyEventTap::tap(KeyCode code) {
    press(code);
    release(code);
}

void FakeKeyEventTap::pressButton() {
    buttonIsDown_ = true;
    deliver({.type = TapEventType::leftMouseDown, .flags = flags()});
}

void FakeKeyEventTap::click() {
    pressButton();
    buttonIsDown_ = false;
    deliver({.type = TapEventType::leftMouseUp, .flags = flags()});
}

void FakeKeyEventTap::scroll() {
    deliver({.type = TapEventType::scrollWheel, .flags = flags()});
}

TapVerdict FakeKeyEventTap::decide(const TapEvent& event) {
    if (event.sourceUserData != 0) return TapVerdict::pass;
    if (event.type == TapEventType::keyUp)
        return heldBack_.erase(event.keyCode) > 0 ? TapVerdict::swallow : TapVerdict::pass;
    if (event.type != TapEventType::keyDown) return TapVerdict::pass;
    const SwallowedKey key{event.keyCode, event.flags & Hotkey::standardModifierMask};
    if (std::ranges::find(declared_, key) != declared_.end()) heldBack_.insert(event.keyCode);
    return heldBack_.contains(event.keyCode) ? TapVerdict::swallow : TapVerdict::pass;
}

void FakeKeyEventTap::deliver(const TapEvent& event) {
    if (!isEnabled()) return;
    const auto verdict = decide(event);
    if (verdict == TapVerdict::swallow) swallowed.push_back(event);
    const auto handler = handler_;  // the handler may remove the hook
    if (handler(event) != verdict)
        contradictions.push_back("the handler's verdict differs for key " +
                                 std::to_string(event.keyCode) + ", flags " +
                                 std::to_string(event.flags));
}

void FakeKeyEventTap::disable() {
    if (!isEnabled()) return;
    enabled_ = false;
    heldBack_.clear();
    const auto handler = handler_;
    handler({.type = TapEventType::tapDisabledByTimeout});
}

}  // namespace quorvi::test
