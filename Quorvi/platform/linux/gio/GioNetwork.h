#pragma once

#include <memory>

#include "Quorvi/platform/Network.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The network as GIO's monitor sees it: from NetworkManager, in a sandbox from the portal, and else
// from the kernel's routes. The monitor belongs to the thread that first asks for it, so there is
// one object a process. Main thread; the scheduler outlives it.
class GioNetwork final : public Network {
public:
    explicit GioNetwork(Scheduler& scheduler);
    ~GioNetwork() override;

    [[nodiscard]] Subscription onReturn(std::function<void()> observer) override;

private:
    class Watcher;

    Scheduler& scheduler_;
    std::shared_ptr<Observable> returns_;
    std::unique_ptr<Watcher> watcher_;
};

}  // namespace quorvi
