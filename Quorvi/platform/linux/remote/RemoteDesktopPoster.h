#pragma once

#include <filesystem>
#include <memory>

#include "Quorvi/platform/KeyConsent.h"
#include "Quorvi/platform/linux/keyboard/ChordPoster.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Presses keys as a remote desktop's user, once the user of this one has allowed it. The desktop
// shows a sign while a session is open, so there is one only from prepare() to the end of post(),
// some seconds at most. What the user holds counts, and can't be let go of. Main thread; the
// scheduler outlives it.
class RemoteDesktopPoster final : public ChordPoster, public KeyConsent {
public:
    enum class Way {
        portal,  // asks the user once, and knows the leave by a token
        mutter,  // asks nothing
    };

    // `findWay` is called once, on a thread where it may wait. `consent` is the file that keeps the
    // user's leave.
    RemoteDesktopPoster(Scheduler& scheduler, std::function<Way()> findWay,
                        std::filesystem::path consent, std::function<std::string()> activeClass);
    ~RemoteDesktopPoster() override;

    bool isAvailable() const override { return state_ == State::on && !hasFailed_; }
    // Never asks the user. If the desktop would, nothing can be posted.
    Task<void> prepare(std::stop_token stop) override;

    State state() const override { return state_; }
    void setWanted(bool wanted) override;
    Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }

private:
    class Worker;

    void press(const ChordKeys& keys) override;

    Scheduler& scheduler_;
    State state_ = State::off;
    bool hasFailed_ = false;  // the last prepare()
    Observable changes_;
    Lifetime lifetime_;
    std::unique_ptr<Worker> worker_;
};

}  // namespace quorvi
