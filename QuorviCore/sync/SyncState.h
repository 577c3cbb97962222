#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/base/SharedString.h"
#include "QuorviCore/sync/SyncLedger.h"

namespace quorvi {

// Everything of the synchronisation that outlives the process. A plain value; copies share the
// bytes.
struct SyncState {
    SyncLedger ledger;
    std::optional<SharedString> owner;        // the account that the data belongs to
    std::optional<SharedString> engineState;  // what CloudSyncEngine keeps, opaque
    SharedStringMap<SharedString> records;  // by item id: what the cloud's last version was, opaque
    SharedStringSet pending;                // ids of items that are still to be sent
    bool initialFetchComplete = false;
    std::optional<Date> lastSynced;
    std::optional<std::map<std::string, std::int64_t, std::less<>>> diagnostics;
};

}  // namespace quorvi
