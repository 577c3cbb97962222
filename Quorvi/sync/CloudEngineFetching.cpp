#include <algorithm>
#include <iterator>
#include <utility>

#include "Quorvi/sync/CloudEngineCore.h"

namespace quorvi {

using namespace cloudEvent;

Task<void> CloudSyncEngine::Core::fetch(std::stop_token stop) {
    tell(WillFetchChanges{}, stop);
    auto learning = learnUser(stop);
    co_await learning;
    auto listing = fetchZoneList(stop);
    co_await listing;
    const auto zones = memory.unfinishedZones;
    for (const auto& zone : zones) {
        auto fetching = fetchZone(zone, stop);
        co_await fetching;
    }
    tell(DidFetchChanges{}, stop);
}

Task<void> CloudSyncEngine::Core::fetchZoneList(std::stop_token stop) {
    CloudZoneChanges changes;
    bool isExpired = false;
    try {
        auto asking = database.zoneChanges(memory.databaseToken, stop);
        changes = co_await asking;
    } catch (const CloudError& error) {
        if (error.code() != cloudErrorCode::changeTokenExpired || memory.databaseToken.empty())
            throw;
        isExpired = true;
    }
    check(stop);
    if (isExpired) {
        auto asking = database.zoneChanges({}, stop);
        changes = co_await asking;
        check(stop);
        // A list of what there is names no zone that is gone.
        for (const auto& [zone, token] : memory.zoneTokens)
            if (std::find(changes.modified.begin(), changes.modified.end(), zone) ==
                changes.modified.end())
                changes.deleted.push_back(zone);
    }
    const bool isNew = changes.token != memory.databaseToken;
    memory.databaseToken = std::move(changes.token);
    for (const auto& zone : changes.deleted) {
        memory.zoneTokens.erase(zone);
        memory.unfinishedZones.erase(zone);
    }
    memory.unfinishedZones.insert(changes.modified.begin(), changes.modified.end());
    if (!changes.modified.empty() || !changes.deleted.empty())
        tell(FetchedDatabaseChanges{std::move(changes.modified), std::move(changes.deleted)}, stop);
    if (isNew) tellState(stop);
}

Task<void> CloudSyncEngine::Core::fetchZone(std::string zone, std::stop_token stop) {
    tell(WillFetchRecordZoneChanges{zone}, stop);
    std::optional<CloudError> failure;
    try {
        auto fetching = fetchPages(zone, stop);
        co_await fetching;
    } catch (const CloudError& error) {
        failure = error;
    }
    check(stop);
    const bool isGone = failure && failure->code() == cloudErrorCode::zoneNotFound;
    if (isGone) memory.zoneTokens.erase(zone);
    if (isGone || !failure) memory.unfinishedZones.erase(zone);
    tellState(stop);
    tell(DidFetchRecordZoneChanges{std::move(zone), std::move(failure)}, stop);
}

// The next page is on its way while this one is taken in.
Task<void> CloudSyncEngine::Core::fetchPages(const std::string& zone, std::stop_token stop) {
    std::string token = memory.zoneTokens[zone];
    auto asking = database.recordChanges(zone, token, stop);
    for (;;) {
        CloudRecordChanges page;
        bool isExpired = false;
        try {
            page = co_await asking;
        } catch (const CloudError& error) {
            if (error.code() != cloudErrorCode::changeTokenExpired || token.empty()) throw;
            isExpired = true;
        }
        check(stop);
        if (isExpired) {
            token.clear();
            memory.zoneTokens.erase(zone);
            asking = database.recordChanges(zone, token, stop);
            continue;
        }
        const bool more = page.more;
        if (more) {
            asking = database.recordChanges(zone, page.token, stop);
            asking.start();
        }
        auto delivering = deliver(zone, page, stop);
        co_await delivering;
        // Only now: what has not been taken in must be fetched again.
        token = page.token;
        memory.zoneTokens[zone] = token;
        if (!more) co_return;
        tellState(stop);
        // The database may have had the page ready: give the others a turn all the same.
        auto pausing = pause(stop);
        co_await pausing;
        check(stop);
    }
}

Task<void> CloudSyncEngine::Core::deliver(const std::string& zone, CloudRecordChanges& page,
                                          std::stop_token stop) {
    auto& records = page.modified;
    auto& deletions = page.deleted;
    for (std::size_t record = 0, deletion = 0;
         record < records.size() || deletion < deletions.size();) {
        if (record + deletion) {
            auto pausing = pause(stop);
            co_await pausing;
            check(stop);
        }
        const auto taken = std::min(records.size() - record, recordsPerEvent);
        const auto gone = std::min(deletions.size() - deletion, recordsPerEvent - taken);
        FetchedRecordZoneChanges event{zone, {}, {}};
        const auto first = std::make_move_iterator(records.begin() + static_cast<long>(record));
        event.modifications.assign(first, first + static_cast<long>(taken));
        const auto dead = std::make_move_iterator(deletions.begin() + static_cast<long>(deletion));
        event.deletions.assign(dead, dead + static_cast<long>(gone));
        record += taken;
        deletion += gone;
        tell(std::move(event), stop);
    }
}

}  // namespace quorvi
