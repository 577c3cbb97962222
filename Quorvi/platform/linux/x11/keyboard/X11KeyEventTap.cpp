#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventTap.h"

#include <mutex>
#include <utility>

#include "Quorvi/platform/linux/x11/keyboard/X11InputSession.h"
#include "QuorviCore/async/Future.h"

namespace quorvi {

// Where the input thread leaves events for the main thread. Shared by both and by the posted
// deliveries, which find it gone once the hook has been removed.
struct X11KeyEventTap::Inbox : std::enable_shared_from_this<Inbox> {
    explicit Inbox(Scheduler& s) : scheduler(s) {}

    Scheduler& scheduler;
    // Main thread only. Shared, because a handler may remove the hook that is calling it.
    std::shared_ptr<std::function<TapVerdict(const TapEvent&)>> handler;
    std::mutex mutex;  // guards what follows, never held for long
    std::vector<TapEvent> events;
    bool muted = false;  // from disabling until the input thread has enabled itself again

    void add(const TapEvent& event) {
        {
            std::lock_guard lock(mutex);
            if (muted) return;
            events.push_back(event);
            if (events.size() > 1) return;  // a delivery is on its way
        }
        scheduler.post([weak = weak_from_this()] {
            if (const auto inbox = weak.lock()) inbox->deliver();
        });
    }

    void deliver() {
        for (const auto& event : take()) {
            const auto current = handler;
            if (current && !isMuted()) (*current)(event);
        }
    }

    void mute() {
        std::lock_guard lock(mutex);
        muted = true;
        events.clear();
    }

    bool isMuted() {
        std::lock_guard lock(mutex);
        return muted;
    }

    void unmute() {
        std::lock_guard lock(mutex);
        muted = false;
    }

    std::vector<TapEvent> take() {
        std::lock_guard lock(mutex);
        return std::exchange(events, {});
    }
};

X11KeyEventTap::X11KeyEventTap(Scheduler& scheduler) : scheduler_(scheduler) {}

X11KeyEventTap::~X11KeyEventTap() {
    remove();
}

bool X11KeyEventTap::install(std::function<TapVerdict(const TapEvent&)> handler) {
    remove();
    auto inbox = std::make_shared<Inbox>(scheduler_);
    inbox->handler =
        std::make_shared<std::function<TapVerdict(const TapEvent&)>>(std::move(handler));
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
    if (inbox_) inbox_->handler = nullptr;
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
