#pragma once

#include <filesystem>
#include <memory>

#include "Quorvi/platform/ClockChanges.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Changes of the clock as the kernel reports them, of the time zone as timedated announces it or
// another program makes it, and waking as logind announces it. A thread of its own waits for them.
// Created and destroyed on the main thread; the scheduler must outlive it.
class SystemClockChanges final : public ClockChanges {
public:
    // `zone` is the file, usually a link, that says what the time zone is.
    explicit SystemClockChanges(Scheduler& scheduler,
                                std::filesystem::path zone = "/etc/localtime");
    ~SystemClockChanges() override;

    [[nodiscard]] Subscription onChange(std::function<void()> observer) override;

private:
    class Watcher;

    std::shared_ptr<Observable> changes_;
    std::unique_ptr<Watcher> watcher_;
};

}  // namespace quorvi
