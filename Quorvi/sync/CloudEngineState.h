#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// What CloudSyncEngine keeps from one run of the program to the next. A plain value.
struct CloudEngineState {
    std::string user;           // record name; empty until it is known
    std::string databaseToken;  // empty before the first fetch
    std::map<std::string, std::string> zoneTokens;
    std::set<std::string> unfinishedZones;  // changed, and not yet fetched completely
    std::vector<std::string> pendingZones;
    std::vector<CloudRecordID> pendingRecords;

    bool operator==(const CloudEngineState&) const = default;

    Bytes encoded() const;
    // Returns nullopt for anything that encoded() does not write.
    static std::optional<CloudEngineState> decode(const Bytes& bytes);
};

}  // namespace quorvi
