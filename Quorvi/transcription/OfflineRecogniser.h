#pragma once

#include <optional>
#include <stop_token>
#include <vector>

#include "Quorvi/platform/ServiceProgram.h"
#include "QuorviCore/async/Future.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The recogniser on this machine: runs its program while it is used, since it needs much memory.
// Starts it again, each time a little later, if it ends by itself. Main thread; owned by the
// controller.
class OfflineRecogniser {
public:
    static constexpr Duration idleLimit = std::chrono::minutes(5);
    static constexpr Duration startLimit = std::chrono::seconds(20);
    static constexpr Duration longestRest = std::chrono::minutes(1);

    // `program` may be null, which means that none is installed; otherwise it outlives this object.
    OfflineRecogniser(ServiceProgram* program, Scheduler& scheduler)
        : program_(program), scheduler_(scheduler) {}

    bool isInstalled() const { return program_ && program_->isInstalled(); }
    [[nodiscard]] Subscription onInstalledChange(std::function<void()> observer) const {
        return program_ ? program_->onInstalledChange(std::move(observer)) : Subscription();
    }
    bool isRunning() const { return run_ != nullptr; }

    // Starts the program unless it runs, and keeps it for the next few minutes.
    void prepare();
    // Prepares, and resumes with the endpoint as soon as it serves. Throws QuorviError if that
    // takes too long, Cancelled after a stop.
    Task<ServiceProgram::Endpoint> endpoint(std::stop_token stop);
    // The program has done its work: an earlier failure is forgotten.
    void succeeded() { failures_ = 0; }
    // Ends the program.
    void end();

private:
    void start();
    void ended();

    ServiceProgram* program_;
    Scheduler& scheduler_;
    std::unique_ptr<ServiceProgram::Run> run_;
    std::optional<ServiceProgram::Endpoint> endpoint_;
    std::vector<Promise<void>> waiting_;  // for endpoint_
    int failures_ = 0;                    // since the last success
    Timer restart_;
    Timer idle_;
};

}  // namespace quorvi
