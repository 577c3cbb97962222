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
    if (!session->connection.synchronise(patience) || bindsReleases_ ||
        !session->method.isUnavailable())
        return;
    bindsReleases_ = true;
    setBindings(bound_, true);
}

void SwayShortcuts::end() {
    if (hasKeyboard_) giveKeyboardBack();
    bind({});
    source_.reset();
    events_.reset();
    commands_.reset();
}

void SwayShortcuts::bind(std::vector<SwallowedKey> keys) {
    wanted_ = std::move(keys);
    applyWanted();
}

void SwayShortcuts::applyWanted() {
    if (held_ && bindsReleases_ && !bound_.empty()) return;  // until it is released
    auto keys = wanted_;
    const auto without = [](const std::vector<SwallowedKey>& all,
                            const std::vector<SwallowedKey>& others) {
        std::vector<SwallowedKey> rest;
        std::ranges::copy_if(all, std::back_inserter(rest), [&](const SwallowedKey& key) {
            return std::ranges::find(others, key) == others.end();
        });
        return rest;
    };
    std::erase_if(keys, [this](const SwallowedKey& key) { return belongsToUser(key); });
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
        const auto code = std::to_string(key.keyCode);
        const bool hasRelease = bindsReleases_ && key.keyCode != keyCode::escape;
        commands += isSet ? "bindcode --no-repeat --no-warn " + name + ' ' +
                                std::string(pressCommand) + code + ';'
                          : "unbindcode " + name + ';';
        if (hasRelease)
            commands += isSet ? "bindcode --release --no-warn " + name + ' ' +
                                    std::string(releaseCommand) + code + ';'
                              : "unbindcode --release " + name + ';';
    }
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
    const auto found = std::ranges::find(bound_, keyCode, &SwallowedKey::keyCode);
    if (found == bound_.end()) return;
    if (keyCode == keyCode::escape) {
        report(keyCode, true);
        report(keyCode, false);
        return;
    }
    if (held_ && seesRelease()) return;  // a remote keyboard repeats its presses
    if (held_) return released();        // sway has forgotten the release
    held_ = *found;
    isTold_ = false;
    takeKeyboard();
    tellPress();
}

// Once the release can't be missed any more; before what comes after it.
void SwayShortcuts::tellPress() {
    if (held_ && !std::exchange(isTold_, true)) report(held_->keyCode, true);
}

bool SwayShortcuts::seesRelease() const {
    const auto* session = input_.session();
    return hasKeyboard_ && session && !session->method.isUnavailable();
}

void SwayShortcuts::released() {
    const auto keyCode = std::exchange(held_, std::nullopt)->keyCode;
    report(keyCode, false);
    if (bindsReleases_) applyWanted();
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
    lastKey_ = Clock::now();
    giveBackWhenQuiet();
}

void SwayShortcuts::giveBackWhenQuiet() {
    const auto look = [weak = weak_from_this(), hold = hold_](WaylandInput::Session* session) {
        const auto self = weak.lock();
        if (!self || !self->isLeaving_ || self->hold_ != hold) return;
        // Keys that have arrived and were not looked at yet count, too.
        if (session) session->connection.synchronise(patience);
        if (!self->isLeaving_) return;
        if (session && (Clock::now() - self->lastKey_ < quietTime || !session->method.isQuiet()))
            return self->giveBackWhenQuiet();
        self->giveKeyboardBack();
    };
    input_.run(look, quietTime);
}

void SwayShortcuts::giveKeyboardBack() {
    hasKeyboard_ = isLeaving_ = false;
    held_.reset();
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
    lastKey_ = Clock::now();
    tellPress();
    const auto position = key + evdevOffset;
    if (position > 255) return false;
    const auto keyCode = keyCodeOfPosition(static_cast<XKeycode>(position));
    if (held_ && keyCode == held_->keyCode) {
        if (!isDown) released();
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
