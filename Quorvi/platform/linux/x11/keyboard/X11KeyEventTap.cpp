#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventTap.h"

#include <utility>

#include "Quorvi/platform/linux/keyboard/TapInbox.h"
#include "Quorvi/platform/linux/x11/keyboard/X11InputSession.h"
#include "QuorviCore/async/Future.h"

namespace quorvi {

X11KeyEventTap::X11KeyEventTap(Scheduler& scheduler) : scheduler_(scheduler) {}

X11KeyEventTap::~X11KeyEventTap() {
    remove();
}

bool X11KeyEventTap::install(std::function<TapVerdict(const TapEvent&)> handler) {
    remove();
    auto inbox = std::make_shared<TapInbox>(scheduler_, std::move(handler));
    auto session = X11InputSession::start(
        [inbox](const TapEvent& event) { inbox->add(event); },
        [inbox] { inbox->add({.type = TapEventType::tapDisabledByUserInput}); }, swallowed_);
    if (!session) return false;
    inbox_ = std::move(inbox);
    session_ = std::move(session);
    session_->setQuietModifier(quietModifier_);
    session_->setPasteChords(pasteChords_);
    enabled_ = true;
    return true;
}

void X11KeyEventTap::remove() {
    session_.reset();
    if (inbox_) inbox_->close();
    inbox_.reset();
    enabled_ = false;
}

bool X11KeyEventTap::isValid() const {
    return session_ && session_->isAlive();
}

bool X11KeyEventTap::isEnabled() const {
    return enabled_ && isValid();
}

void X11KeyEventTap::setEnabled(bool enabled) {
    if (!session_ || enabled == enabled_) return;
    enabled_ = enabled;
    if (!enabled) inbox_->mute();
    session_->setEnabled(enabled, [inbox = inbox_, enabled] {
        if (enabled) inbox->unmute();
    });
}

void X11KeyEventTap::setSwallowed(std::vector<SwallowedKey> keys) {
    swallowed_ = std::move(keys);
    if (session_) session_->setSwallowed(swallowed_);
}

void X11KeyEventTap::setQuietModifier(std::optional<KeyCode> modifier) {
    quietModifier_ = modifier;
    if (session_) session_->setQuietModifier(modifier);
}

bool X11KeyEventTap::keyIsDown(KeyCode keyCode) const {
    return session_ && session_->pressedKeys().keyIsDown(keyCode);
}

bool X11KeyEventTap::buttonIsDown(std::int64_t button) const {
    return session_ && session_->pressedKeys().buttonIsDown(button);
}

void X11KeyEventTap::setPasteChords(PasteChords chords) {
    pasteChords_ = std::move(chords);
    if (session_) session_->setPasteChords(pasteChords_);
}

Task<bool> X11KeyEventTap::looksBeforePasting(pid_t pid, std::stop_token stop) {
    // A session that ends drops what it has not done yet.
    struct Answer {
        explicit Answer(Scheduler& scheduler) : promise(scheduler) {}
        ~Answer() { promise.resolve(false); }
        Promise<bool> promise;
    };
    auto answer = std::make_shared<Answer>(scheduler_);
    auto future = answer->promise.future(std::move(stop));
    if (session_)
        session_->choosePaste(pid, [answer](const PasteChords::Choice& choice) {
            answer->promise.resolve(choice.looksFirst);
        });
    answer.reset();
    co_return co_await future;
}

void X11KeyEventTap::post(std::span<const TapEvent> events, pid_t pid) {
    if (session_) session_->post({events.begin(), events.end()}, pid);
}

}  // namespace quorvi
