#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// What CloudSyncEngine remembers between two runs of the program.
struct CloudEngineState {
    std::string user;           // record name; empty until it has been asked for
    std::string databaseToken;  // empty: nothing fetched yet
    std::map<std::string, std::string> zoneTokens;
    std::set<std::string> unfinishedZones;  // said to have changed, and not fetched to the end
    std::vector<std::string> pendingZones;
    std::vector<CloudRecordID> pendingRecords;

    bool operator==(const CloudEngineState&) const = default;

    Bytes encoded() const;
    // Nothing for what encoded() has not made.
    static std::optional<CloudEngineState> decode(const Bytes& bytes);
};

}  // namespace quorvi
