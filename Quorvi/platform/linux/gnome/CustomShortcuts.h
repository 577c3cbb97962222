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
// before the user has had it listed, here or by another process. Main thread; the scheduler
// outlives it.
class CustomShortcuts final : public ShortcutSource {
public:
    // `helper` is the path of quorvi-shortcut, `program` Quorvi's own.
    CustomShortcuts(Scheduler& scheduler, std::string helper, std::string program);
    ~CustomShortcuts() override;

    Support support() const override;
    void bind(std::vector<SwallowedKey> keys) override;
    bool isBound() const override { return isBound_; }
    std::string takenBy() const override { return takenBy_; }
    bool isListed() const override { return isListed_; }
    void setListed(bool listed) override;
    void start(std::function<void(const SwallowedKey&, Change)> changed,
               std::function<void()> boundChanged) override;

private:
    class Watcher;
    struct Answer;
    void heard(const std::string& word);
    void answered(const Answer& answer);

    Scheduler& scheduler_;
    const std::string helper_;
    const std::string program_;
    std::function<void(const SwallowedKey&, Change)> changed_;
    std::function<void()> boundChanged_;
    std::vector<SwallowedKey> keys_;
    std::optional<SwallowedKey> key_;  // the one for dictating
    bool isBound_ = false;
    bool isListed_ = false;
    bool repeats_ = true;
    std::string takenBy_;
    KeyRepeats presses_;
    Lifetime lifetime_;
    std::unique_ptr<Watcher> watcher_;
};

}  // namespace quorvi
