#include "Quorvi/platform/linux/wayland/sway/SwayShortcuts.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>

#include "Quorvi/platform/linux/wayland/sway/SwayConfig.h"
#include "Quorvi/platform/linux/xkb/KeyMap.h"
#include "QuorviCore/json/JsonReading.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;

// The keyboard is given back between words, not amid one.
constexpr auto quietTime = 30ms;
constexpr auto patience = 300ms;  // for the compositor's answer
// Longer than any dictation: nobody's keyboard is held for ever.
constexpr auto longestHold = 200s;
// How long a stopped process keeps it, and how often a running one says that it runs.
constexpr auto longestStop = 2s;
constexpr auto signOfLife = 500ms;
// How many presses of one key without a release sway tells apart.
constexpr int mostPresses = 32;
constexpr std::uint32_t evdevOffset = 8;

// What sway calls the combination; by the key's position, whatever the layout.
std::string combination(const SwallowedKey& key) {
    std::string name;
    for (const auto& [flag, modifier] :
         {std::pair(modifierFlag::shift, "Shift+"), std::pair(modifierFlag::control, "Ctrl+"),
          std::pair(modifierFlag::option, "Mod1+"), std::pair(modifierFlag::command, "Mod4+")})
        if (key.modifiers & flag) name += modifier;
    return name + std::to_string(positionOfKeyCode(key.keyCode));
}

// The command of a binding: does nothing, but sway announces it.
constexpr std::string_view pressCommand = "nop quorvi press ";
constexpr std::string_view releaseCommand = "nop quorvi release ";
constexpr std::string_view repeatCommand = "nop quorvi repeat";

// sway counts a key that is pressed again without a release, as remote keyboards do, as a further
// one that is held. Bound before the key alone, these combinations are the repeats.
std::string repeatBindings(const std::string& name, const std::string& key, bool isSet) {
    std::string commands, all = name;
    for (int presses = 2; presses <= mostPresses; ++presses) {
        all += '+' + key;
        commands +=
            isSet ? "bindcode --no-repeat --no-warn " + all + ' ' + std::string(repeatCommand) + ';'
                  : "unbindcode " + all + ';';
    }
    return commands;
}

bool contains(const std::vector<SwallowedKey>& keys, const SwallowedKey& key) {
    return std::ranges::find(keys, key) != keys.end();
}

// What follows `command` in a binding event, as a key code.
std::optional<KeyCode> keyOf(const std::string& command, std::string_view prefix) {
    if (!command.starts_with(prefix)) return std::nullopt;
    const auto number = json::integerOf(std::string_view(command).substr(prefix.size()));
    return number ? std::optional(static_cast<KeyCode>(*number)) : std::nullopt;
}

std::string memberOf(const rapidjson::Value& object, const char* name) {
    if (!object.IsObject()) return {};
    const auto found = object.FindMember(name);
    return found != object.MemberEnd() && found->value.IsString() ? found->value.GetString() : "";
}

}  // namespace

SwayShortcuts::SwayShortcuts(WaylandInput& input, Sink sink, std::function<void()> onLost)
    : input_(input), sink_(std::move(sink)), onLost_(std::move(onLost)) {}

bool SwayShortcuts::begin() {
    commands_.emplace();
    events_.emplace();
    if (!commands_->isAlive() || !events_->subscribe(R"(["binding","workspace"])")) return false;
    source_.emplace(events_->fileDescriptor(), [this] { return processEvents(); });
    if (auto* session = input_.session()) {
        session->method.enter();
        lookForInputMethod();
        session->method.leave();
    }
    return true;
}

// Within the method's enter() and leave(). Another program may have become the seat's since. What
// was asked of the compositor before is done when this returns.
void SwayShortcuts::lookForInputMethod() {
    auto* session = input_.session();
    if (!session->connection.synchronise(patience) || !session->method.isUnavailable()) return;
    if (!std::exchange(hasRival_, true)) setReleases(bound_, true);
}

void SwayShortcuts::end() {
    bind({});
    if (hasKeyboard_) giveKeyboardBack();
    source_.reset();
    events_.reset();
    commands_.reset();
}

void SwayShortcuts::bind(std::vector<SwallowedKey> keys) {
    wanted_ = std::move(keys);
    applyWanted();
}

void SwayShortcuts::applyWanted() {
    auto keys = wanted_;
    const auto without = [](const std::vector<SwallowedKey>& all,
                            const std::vector<SwallowedKey>& others) {
        std::vector<SwallowedKey> rest;
        std::ranges::copy_if(all, std::back_inserter(rest),
                             [&](const SwallowedKey& key) { return !contains(others, key); });
        return rest;
    };
    std::erase_if(keys, [this](const SwallowedKey& key) { return belongsToUser(key); });
    // Its binding stays until it is released.
    if (held_ && contains(bound_, *held_) && !contains(keys, *held_)) keys.push_back(*held_);
    setBindings(without(bound_, keys), false);
    setBindings(without(keys, bound_), true);
    bound_ = std::move(keys);
}

// A binding of the user's is never replaced; what was found holds until sway is reloaded.
bool SwayShortcuts::belongsToUser(const SwallowedKey& key) {
    const auto known = users_.find(combination(key));
    if (known != users_.end()) return known->second;
    const bool isBound = isBoundInSway(key);
    if (isBound && key.keyCode != keyCode::escape)
        std::fprintf(stderr, "quorvi: sway's configuration uses the shortcut; choose another.\n");
    users_.emplace(combination(key), isBound);
    return isBound;
}

void SwayShortcuts::setBindings(const std::vector<SwallowedKey>& keys, bool isSet) {
    std::string commands;
    for (const auto& key : keys) {
        const auto name = combination(key);
        if (key.keyCode != keyCode::escape)
            commands += repeatBindings(name, std::to_string(positionOfKeyCode(key.keyCode)), isSet);
        commands += isSet ? "bindcode --no-repeat --no-warn " + name + ' ' +
                                std::string(pressCommand) + std::to_string(key.keyCode) + ';'
                          : "unbindcode " + name + ';';
    }
    run(commands);
    if (hasRival_) setReleases(keys, isSet);
}

void SwayShortcuts::setReleases(const std::vector<SwallowedKey>& keys, bool isSet) {
    std::string commands;
    for (const auto& key : keys)
        if (key.keyCode != keyCode::escape)
            commands += isSet ? "bindcode --release --no-warn " + combination(key) + ' ' +
                                    std::string(releaseCommand) + std::to_string(key.keyCode) + ';'
                              : "unbindcode --release " + combination(key) + ';';
    run(commands);
}

void SwayShortcuts::run(const std::string& commands) {
    if (!commands.empty() && commands_) commands_->ask(SwaySocket::Message::command, commands);
}

bool SwayShortcuts::processEvents() {
    const auto handler = [this](SwaySocket::Message message, const std::string& payload) {
        handle(message, payload);
    };
    if (events_->readEvents(handler) && commands_->isAlive()) return true;
    if (hasKeyboard_) giveKeyboardBack();
    onLost_();
    return false;
}

void SwayShortcuts::handle(SwaySocket::Message message, const std::string& payload) {
    rapidjson::Document event;
    if (!json::parse(event, payload) || !event.IsObject()) return;
    if (message == SwaySocket::Message::workspaceEvent) {
        // A reload of its configuration drops what was bound at run time.
        if (memberOf(event, "change") != "reload") return;
        users_.clear();
        bound_.clear();
        return applyWanted();
    }
    const auto binding = event.FindMember("binding");
    if (message != SwaySocket::Message::bindingEvent || binding == event.MemberEnd()) return;
    const auto command = memberOf(binding->value, "command");
    if (const auto key = keyOf(command, pressCommand)) pressed(*key);
    if (const auto key = keyOf(command, releaseCommand); key && held_ && held_->keyCode == *key)
        released();
}

bool SwayShortcuts::wants(KeyCode keyCode) const {
    return std::ranges::any_of(bound_,
                               [&](const SwallowedKey& key) { return key.keyCode == keyCode; });
}

void SwayShortcuts::pressed(KeyCode keyCode) {
    // What the keyboard has seen before, which comes on another connection.
    if (hasKeyboard_ && input_.session()) input_.session()->connection.synchronise(patience);
    const auto found = std::ranges::find(bound_, keyCode, &SwallowedKey::keyCode);
    if (found == bound_.end()) return;
    if (keyCode == keyCode::escape || std::exchange(released_, std::nullopt) == keyCode) {
        report(keyCode, true);
        report(keyCode, false);
        return;
    }
    if (held_) released();  // before this program had the keyboard
    held_ = *found;
    isTold_ = false;
    takeKeyboard();
    tellPress();
}

// Once the release can't be missed any more; before what comes after it.
void SwayShortcuts::tellPress() {
    if (held_ && !std::exchange(isTold_, true)) report(held_->keyCode, true);
}

void SwayShortcuts::released() {
    const auto keyCode = std::exchange(held_, std::nullopt)->keyCode;
    report(keyCode, false);
    leaveKeyboard();
}

void SwayShortcuts::takeKeyboard() {
    isLeaving_ = false;
    auto* session = input_.session();
    if (hasKeyboard_ || !session) return;
    hasKeyboard_ = true;
    session->method.enter();
    session->method.grab([this](std::uint32_t key, bool isDown) { return handleKey(key, isDown); });
    session->connection.flush();
    ++hold_;
    limitHold();
    limitStop();
    lookForInputMethod();
}

void SwayShortcuts::limitHold() {
    input_.run(
        [weak = weak_from_this(), hold = hold_](WaylandInput::Session*) {
            const auto self = weak.lock();
            if (!self || !self->hasKeyboard_ || self->hold_ != hold) return;
            if (self->held_) self->released();
            self->giveKeyboardBack();
        },
        longestHold);
}

// Renews the limit as long as the keyboard is held.
void SwayShortcuts::limitStop() {
    stopLimit_.renew(longestStop);
    input_.run(
        [weak = weak_from_this(), hold = hold_](WaylandInput::Session*) {
            const auto self = weak.lock();
            if (self && self->hasKeyboard_ && self->hold_ == hold) self->limitStop();
        },
        signOfLife);
}

void SwayShortcuts::leaveKeyboard() {
    if (!hasKeyboard_) return;
    isLeaving_ = true;
    lastKey_ = std::chrono::steady_clock::now();
    giveBackWhenQuiet();
}

void SwayShortcuts::giveBackWhenQuiet() {
    const auto look = [weak = weak_from_this(), hold = hold_](WaylandInput::Session* session) {
        const auto self = weak.lock();
        if (!self || !self->isLeaving_ || self->hold_ != hold) return;
        // Keys that have arrived and were not looked at yet count, too.
        if (session) session->connection.synchronise(patience);
        if (!self->isLeaving_) return;
        if (session && (std::chrono::steady_clock::now() - self->lastKey_ < quietTime ||
                        !session->method.isQuiet()))
            return self->giveBackWhenQuiet();
        self->giveKeyboardBack();
        self->applyWanted();
    };
    input_.run(look, quietTime);
}

void SwayShortcuts::giveKeyboardBack() {
    hasKeyboard_ = isLeaving_ = false;
    held_.reset();
    released_.reset();
    if (auto* session = input_.session()) {
        session->method.ungrab();
        session->method.leave();
        session->connection.flush();
    }
    stopLimit_.cancel();
    std::lock_guard lock(mutex_);
    down_.clear();
}

// Returns whether the key is kept from the focused window.
bool SwayShortcuts::handleKey(std::uint32_t key, bool isDown) {
    lastKey_ = std::chrono::steady_clock::now();
    tellPress();
    const auto position = key + evdevOffset;
    if (position > 255) return false;
    const auto keyCode = keyCodeOfPosition(static_cast<XKeycode>(position));
    if (held_ && keyCode == held_->keyCode) {
        if (!isDown) released();
        return true;
    }
    // sway's word of the press is under way, on its other connection.
    if (!isDown && keyCode != keyCode::escape && wants(keyCode) && !keyIsDown(keyCode)) {
        released_ = keyCode;
        return true;
    }
    const bool isKept =
        keyCode == keyCode::escape && wants(keyCode) && (held_ || keyIsDown(keyCode));
    // The release of a key whose press sway has announced was told with it.
    const bool wasTold = keyCode == keyCode::escape && !isDown && !keyIsDown(keyCode);
    if (!wasTold) report(keyCode, isDown);
    return isKept;
}

// Tells the main thread, with the modifiers that are held as far as is known.
void SwayShortcuts::report(KeyCode keyCode, bool isDown) {
    TapEvent event{.keyCode = keyCode};
    {
        std::lock_guard lock(mutex_);
        if (isDown)
            down_.insert(keyCode);
        else
            down_.erase(keyCode);
        for (const auto key : down_) event.flags |= flagsOfKey(key);
    }
    if (held_) event.flags |= held_->modifiers;
    event.type = changesFlags(keyCode) ? TapEventType::flagsChanged
                 : isDown              ? TapEventType::keyDown
                                       : TapEventType::keyUp;
    sink_(event);
}

bool SwayShortcuts::keyIsDown(KeyCode keyCode) const {
    std::lock_guard lock(mutex_);
    return down_.contains(keyCode);
}

}  // namespace quorvi
