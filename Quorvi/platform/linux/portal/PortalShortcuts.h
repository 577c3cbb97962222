#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Quorvi/platform/linux/shortcuts/KeyRepeats.h"
#include "Quorvi/platform/linux/shortcuts/ShortcutSource.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The desktop's portal for global shortcuts. The desktop asks the user about a key once, and may
// give another than was proposed; Escape would be asked about as well, so it is not bound. The
// shortcut stays the user's to change or remove in the desktop's settings. Main thread; the
// scheduler outlives it.
class PortalShortcuts final : public ShortcutSource {
public:
    // `isGnome`: keys repeat as GNOME's settings say.
    PortalShortcuts(Scheduler& scheduler, bool isGnome);
    ~PortalShortcuts() override;

    Support support() const override { return {.release = true, .asksUser = true}; }
    void bind(std::vector<SwallowedKey> keys) override;
    bool isBound() const override { return !key_ || state_ == State::bound; }
    void start(std::function<void(const SwallowedKey&, Change)> changed,
               std::function<void()> boundChanged) override;

private:
    enum class State { lost, asking, bound, refused };
    class Session;
    void enter(State state);

    Scheduler& scheduler_;
    const bool isGnome_;
    std::function<void(const SwallowedKey&, Change)> changed_;
    std::function<void()> boundChanged_;
    std::optional<SwallowedKey> key_;
    State state_ = State::lost;
    KeyRepeats presses_;
    Lifetime lifetime_;
    std::unique_ptr<Session> session_;
};

}  // namespace quorvi
