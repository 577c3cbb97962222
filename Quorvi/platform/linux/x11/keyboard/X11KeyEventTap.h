#pragma once

#include <sys/types.h>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>

#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/linux/keyboard/PasteChords.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

class TapInbox;
class X11InputSession;

// The input hook on an X server, over XInput 2 raw events and key grabs. Lives on the main thread;
// a thread of its own talks to the server, and events arrive through the scheduler, which must
// outlive the tap. When the server is lost the handler gets tapDisabledByUserInput and isValid()
// becomes false; install() connects again, to the $DISPLAY of that moment, and waits only for that.
class X11KeyEventTap final : public KeyEventTap {
public:
    explicit X11KeyEventTap(Scheduler& scheduler);
    ~X11KeyEventTap() override;

    bool install(std::function<TapVerdict(const TapEvent&)> handler) override;
    void remove() override;
    bool isValid() const override;
    bool isEnabled() const override;
    void setEnabled(bool enabled) override;
    void setSwallowed(std::vector<SwallowedKey> keys) override;
    void setQuietModifier(std::optional<KeyCode> modifier) override;
    bool keyIsDown(KeyCode keyCode) const override;
    bool buttonIsDown(std::int64_t button) const override;

    // The combinations that a posted Command-V becomes; the built-in ones at first.
    void setPasteChords(PasteChords chords);

    // For KeyEventPoster: on the hook's connection, so that the hook recognises its own events.
    Task<bool> looksBeforePasting(pid_t pid, std::stop_token stop);
    void post(std::span<const TapEvent> events, pid_t pid);

private:
    Scheduler& scheduler_;
    std::shared_ptr<TapInbox> inbox_;
    std::unique_ptr<X11InputSession> session_;
    std::vector<SwallowedKey> swallowed_;
    std::optional<KeyCode> quietModifier_;
    PasteChords pasteChords_;
    bool enabled_ = false;
};

}  // namespace quorvi
