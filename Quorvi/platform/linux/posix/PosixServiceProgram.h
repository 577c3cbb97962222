#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/ServiceProgram.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Runs quorvi-speech-service, or a program like it: it reads its key from the first line of
// standard input, ends when that is closed, and prints "listening on ADDRESS" when it serves. A
// thread for each run sleeps until the program says something or ends. Main thread; the destructor
// waits for the programs' ends, a second at most.
class PosixServiceProgram : public ServiceProgram {
public:
    // The program's path and its arguments.
    PosixServiceProgram(Scheduler& scheduler, std::string path, std::vector<std::string> arguments);
    ~PosixServiceProgram() override;

    bool isInstalled() const override;
    std::unique_ptr<Run> start(Events events) override;

private:
    struct Watch;
    class Running;

    Scheduler& scheduler_;
    std::string path_;
    std::vector<std::string> arguments_;
    std::vector<std::shared_ptr<Watch>> watches_;
};

}  // namespace quorvi
