#pragma once

#include <stop_token>
#include <string>

#include "Quorvi/sync/CloudEngineCore.h"

namespace quorvi {

// One call of CloudSyncEngine::fetchChanges(): asks which zones have changed, and fetches those
// page by page. Main thread; lives as long as the call.
class CloudFetch {
public:
    CloudFetch(CloudEngineCore& core, std::stop_token stop)
        : core_(core), memory_(core.memory), stop_(std::move(stop)) {}

    Task<void> run();

private:
    Task<void> fetchZoneList();
    Task<CloudZoneChanges> zoneChanges();
    Task<void> fetchZone(std::string zone);
    Task<void> fetchPages(const std::string& zone);
    Task<void> deliver(const std::string& zone, CloudRecordChanges& page);
    void tell(CloudSyncEvent event) { core_.tell(std::move(event), stop_); }

    CloudEngineCore& core_;
    CloudEngineState& memory_;
    const std::stop_token stop_;
};

}  // namespace quorvi
