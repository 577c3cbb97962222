#pragma once

#include <sys/types.h>
#include <memory>
#include <span>

#include "Quorvi/platform/KeyEventTap.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

class X11InputSession;

// The input hook on an X server, over XInput 2 raw events and key grabs. Lives on the main thread;
// a thread of its own talks to the server, and events come over through the scheduler, which must
// outlive the tap. When the server goes away the handler gets tapDisabledByUserInput and isValid()
// turns false; install() connects anew, to the display then named in the environment. Connecting is
// the only thing that install() waits for.
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
    bool keyIsDown(KeyCode keyCode) const override;
    bool buttonIsDown(std::int64_t button) const override;

    // Posts Command-V and other keys as KeyEventPoster says. It happens on the hook's connection,
    // which is how the hook knows its own events again.
    void post(std::span<const TapEvent> events, pid_t pid);

private:
    struct Inbox;

    Scheduler& scheduler_;
    std::shared_ptr<Inbox> inbox_;
    std::unique_ptr<X11InputSession> session_;
    std::vector<SwallowedKey> swallowed_;
    bool enabled_ = false;
};

}  // namespace quorvi
