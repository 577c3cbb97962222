#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/shortcuts/KeyRepeats.h"
#include "Quorvi/platform/linux/shortcuts/ShortcutSource.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The custom shortcuts of GNOME's settings, which run a command: Quorvi's own helper, at the press
// and at each auto-repeat, so that the end of a hold is when the repeats stop. Nothing is bound
// before the user has had the shortcut installed (CustomShortcutSettings::install(), in any
// process); from then on GNOME's settings list it. Main thread; the scheduler outlives it.
class CustomShortcuts final : public ShortcutSource {
public:
    explicit CustomShortcuts(Scheduler& scheduler);
    ~CustomShortcuts() override;

    Support support() const override;
    void bind(std::vector<SwallowedKey> keys) override;
    bool isBound() const override { return isBound_; }
    std::string takenBy() const override { return takenBy_; }
    void start(std::function<void(const SwallowedKey&, Change)> changed,
               std::function<void()> boundChanged) override;

private:
    class Watcher;
    struct Answer;
    void heard(const std::string& word);
    void answered(const Answer& answer);

    Scheduler& scheduler_;
    std::function<void(const SwallowedKey&, Change)> changed_;
    std::function<void()> boundChanged_;
    std::vector<SwallowedKey> keys_;
    std::optional<SwallowedKey> key_;  // the one for dictating
    bool isBound_ = false;
    bool repeats_ = true;
    std::string takenBy_;
    KeyRepeats presses_;
    Lifetime lifetime_;
    std::unique_ptr<Watcher> watcher_;
};

}  // namespace quorvi
