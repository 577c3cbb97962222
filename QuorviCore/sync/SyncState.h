#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/base/SharedString.h"
#include "QuorviCore/sync/SyncLedger.h"

namespace quorvi {

// The persistent state of synchronisation. A plain value; copies share the bytes.
struct SyncState {
    SyncLedger ledger;
    std::optional<SharedString> owner;        // the account that owns the data
    std::optional<SharedString> cloud;        // the address of the database it is in
    std::optional<SharedString> engineState;  // what CloudSyncEngine keeps, opaque
    SharedStringMap<SharedString> records;    // by item id: the cloud's last version, opaque
    SharedStringSet pending;                  // ids of items to be sent
    bool initialFetchComplete = false;
    std::optional<Date> lastSynced;
    std::optional<std::map<std::string, std::int64_t, std::less<>>> diagnostics;
};

}  // namespace quorvi
