#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/shortcuts/ShortcutSource.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The shortcuts of KDE, which the compositor keeps. A thread of its own talks to it. A combination
// of the user's or of another program is never taken away. Another key ends the hold, since the
// service says then that the shortcut was released. Created and destroyed on the main thread, which
// waits at the end until the compositor has removed the shortcuts; the scheduler outlives it.
class KGlobalAccelShortcuts final : public ShortcutSource {
public:
    // `helper` is the path of quorvi-shortcut, `program` Quorvi's own.
    KGlobalAccelShortcuts(Scheduler& scheduler, std::string helper, std::string program);
    ~KGlobalAccelShortcuts() override;

    Support support() const override { return {.release = true, .escape = true}; }
    void bind(std::vector<SwallowedKey> keys) override;
    bool isBound() const override;
    std::string takenBy() const override { return state_.takenBy; }
    void start(std::function<void(const SwallowedKey&, Change)> changed,
               std::function<void()> boundChanged) override;

private:
    // What the thread has found.
    struct State {
        bool isServed = false;
        std::optional<SwallowedKey> bound;
        std::string takenBy;

        bool operator==(const State&) const = default;
    };
    class Session;

    Scheduler& scheduler_;
    const std::vector<std::string> guard_;
    State state_;
    std::vector<SwallowedKey> wanted_;  // without Escape
    std::function<void(const SwallowedKey&, Change)> changed_;
    std::function<void()> boundChanged_;
    Lifetime lifetime_;
    std::unique_ptr<Session> session_;
};

// Whether the session's compositor keeps shortcuts in this way. Waits for the session's bus, a
// second at most; any thread.
bool hasKdeShortcuts();

// What else KDE uses these keys for, in its own words; empty if nothing. Waits likewise.
std::string kdeUseOf(const SwallowedKey& key);

// Removes what a program that crashed has left in KDE's settings. Waits likewise.
void removeKdeShortcuts();

}  // namespace quorvi
