#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/ServiceProgram.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Runs quorvi-speech-service, or a program like it: it reads its key from the first line of
// standard input, ends when that is closed, and prints "listening on ADDRESS" when it serves. A
// thread for each run sleeps until the program says something or ends. Main thread; the destructor
// waits for the programs' ends, a second at most.
class PosixServiceProgram : public ServiceProgram {
public:
    // The program's path and its arguments. The executor, which outlives this object, looks whether
    // it is there; the first look blocks.
    PosixServiceProgram(Scheduler& scheduler, Executor& executor, std::string path,
                        std::vector<std::string> arguments);
    ~PosixServiceProgram() override;

    bool isInstalled() override;
    [[nodiscard]] Subscription onInstalledChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }
    std::unique_ptr<Run> start(Events events) override;

private:
    struct Watch;
    class Running;

    void looked(bool found);

    Scheduler& scheduler_;
    Executor& executor_;
    std::string path_;
    std::vector<std::string> arguments_;
    std::vector<std::shared_ptr<Watch>> watches_;
    bool isInstalled_;
    bool isLooking_ = false;
    TimePoint lookedAt_;
    Observable changes_;
    Lifetime lifetime_;
};

}  // namespace quorvi
