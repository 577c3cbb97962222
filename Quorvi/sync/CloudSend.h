#pragma once

#include <cstddef>
#include <memory>
#include <stop_token>
#include <vector>

#include "Quorvi/sync/CloudEngineCore.h"

namespace quorvi {

// One call of CloudSyncEngine::sendChanges(): saves the pending zones, then the pending records,
// several batches at a time. Main thread; lives as long as the call.
class CloudSend {
public:
    CloudSend(CloudEngineCore& core, std::stop_token stop) : core_(core), stop_(std::move(stop)) {}

    Task<void> run();

private:
    class BatchUnderWay;

    Task<void> sendZones();
    Task<void> sendRecords();
    // Begins to save the next batch of the delegate; null if there is none.
    std::unique_ptr<BatchUnderWay> nextBatch(std::size_t limit);
    Task<void> report(std::vector<CloudSaveResult>& results);
    void tell(CloudSyncEvent event) { core_.tell(std::move(event), stop_); }

    CloudEngineCore& core_;
    const std::stop_token stop_;
};

}  // namespace quorvi
