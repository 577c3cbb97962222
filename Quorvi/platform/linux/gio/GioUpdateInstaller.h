#pragma once

#include "Quorvi/platform/UpdateInstaller.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Debian packages: described by dpkg-deb, opened with the application that the desktop has for
// them. Lives on the main thread; asks the system on the executor.
class GioUpdateInstaller : public UpdateInstaller {
public:
    GioUpdateInstaller(Executor& executor, Scheduler& scheduler)
        : executor_(executor), scheduler_(scheduler) {}

    Task<PackageIdentity> identify(std::filesystem::path package) override;
    Task<void> open(std::filesystem::path package) override;

private:
    Executor& executor_;
    Scheduler& scheduler_;
};

}  // namespace quorvi
