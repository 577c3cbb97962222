#pragma once

#include "Quorvi/platform/UpdateInstaller.h"
#include "Quorvi/platform/linux/SerialExecutor.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Debian packages: described by dpkg-deb, opened with the application that the desktop has for
// them. Lives on the main thread; asks the system on a thread of its own.
class GioUpdateInstaller : public UpdateInstaller {
public:
    explicit GioUpdateInstaller(Scheduler& scheduler) : scheduler_(scheduler) {}

    Task<PackageIdentity> identify(std::filesystem::path package) override;
    Task<void> open(std::filesystem::path package) override;

private:
    Scheduler& scheduler_;
    SerialExecutor worker_{"quorvi-install"};
};

}  // namespace quorvi
