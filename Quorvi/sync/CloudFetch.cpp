#include "Quorvi/sync/CloudFetch.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvi {

using namespace cloudEvent;

Task<void> CloudFetch::run() {
    tell(WillFetchChanges{});
    auto learning = core_.learnUser(stop_);
    co_await learning;
    auto listing = fetchZoneList();
    co_await listing;
    const auto zones = memory_.unfinishedZones;
    for (const auto& zone : zones) {
        auto fetching = fetchZone(zone);
        co_await fetching;
    }
    tell(DidFetchChanges{});
}

// Returns the zones that have changed, also if the database no longer understands the token.
Task<CloudZoneChanges> CloudFetch::zoneChanges() {
    CloudZoneChanges changes;
    bool isExpired = false;
    try {
        auto asking = core_.database.zoneChanges(memory_.databaseToken, stop_);
        changes = co_await asking;
    } catch (const CloudError& error) {
        if (error.code() != cloudErrorCode::changeTokenExpired || memory_.databaseToken.empty())
            throw;
        isExpired = true;
    }
    core_.check(stop_);
    if (!isExpired) co_return changes;
    auto asking = core_.database.zoneChanges({}, stop_);
    changes = co_await asking;
    core_.check(stop_);
    // This list has the zones that exist only: the others are gone.
    for (const auto& [zone, token] : memory_.zoneTokens)
        if (std::ranges::find(changes.modified, zone) == changes.modified.end())
            changes.deleted.push_back(zone);
    co_return changes;
}

Task<void> CloudFetch::fetchZoneList() {
    auto asking = zoneChanges();
    auto changes = co_await asking;
    const bool isNew = changes.token != memory_.databaseToken;
    memory_.databaseToken = std::move(changes.token);
    for (const auto& zone : changes.deleted) {
        memory_.zoneTokens.erase(zone);
        memory_.unfinishedZones.erase(zone);
    }
    memory_.unfinishedZones.insert(changes.modified.begin(), changes.modified.end());
    if (!changes.modified.empty() || !changes.deleted.empty())
        tell(FetchedDatabaseChanges{std::move(changes.modified), std::move(changes.deleted)});
    if (isNew) core_.tellState(stop_);
}

Task<void> CloudFetch::fetchZone(std::string zone) {
    tell(WillFetchRecordZoneChanges{zone});
    std::optional<CloudError> failure;
    try {
        auto fetching = fetchPages(zone);
        co_await fetching;
    } catch (const CloudError& error) {
        failure = error;
    }
    core_.check(stop_);
    const bool isGone = failure && failure->code() == cloudErrorCode::zoneNotFound;
    if (isGone) memory_.zoneTokens.erase(zone);
    if (isGone || !failure) memory_.unfinishedZones.erase(zone);
    core_.tellState(stop_);
    tell(DidFetchRecordZoneChanges{std::move(zone), std::move(failure)});
}

// The next page is already being fetched while the delegate receives this one.
Task<void> CloudFetch::fetchPages(const std::string& zone) {
    std::string token = memory_.zoneTokens[zone];
    auto asking = core_.database.recordChanges(zone, token, stop_);
    for (;;) {
        CloudRecordChanges page;
        bool isExpired = false;
        try {
            page = co_await asking;
        } catch (const CloudError& error) {
            if (error.code() != cloudErrorCode::changeTokenExpired || token.empty()) throw;
            isExpired = true;
        }
        core_.check(stop_);
        if (isExpired) {
            token.clear();
            memory_.zoneTokens.erase(zone);
            asking = core_.database.recordChanges(zone, token, stop_);
            continue;
        }
        const bool more = page.more;
        if (more) {
            asking = core_.database.recordChanges(zone, page.token, stop_);
            asking.start();
        }
        auto delivering = deliver(zone, page);
        co_await delivering;
        // Only now: a page that was not delivered must be fetched again.
        token = page.token;
        memory_.zoneTokens[zone] = token;
        if (!more) co_return;
        core_.tellState(stop_);
        // The database may have the page ready: give other work a turn all the same.
        auto pausing = core_.pause(stop_);
        co_await pausing;
    }
}

Task<void> CloudFetch::deliver(const std::string& zone, CloudRecordChanges& page) {
    auto& records = page.modified;
    auto& deletions = page.deleted;
    for (std::size_t record = 0, deletion = 0;
         record < records.size() || deletion < deletions.size();) {
        if (record + deletion) {
            auto pausing = core_.pause(stop_);
            co_await pausing;
        }
        const auto taken = std::min(records.size() - record, CloudSyncEngine::recordsPerEvent);
        const auto gone =
            std::min(deletions.size() - deletion, CloudSyncEngine::recordsPerEvent - taken);
        FetchedRecordZoneChanges event{zone, {}, {}};
        const auto first = std::make_move_iterator(records.begin() + static_cast<long>(record));
        event.modifications.assign(first, first + static_cast<long>(taken));
        const auto dead = std::make_move_iterator(deletions.begin() + static_cast<long>(deletion));
        event.deletions.assign(dead, dead + static_cast<long>(gone));
        record += taken;
        deletion += gone;
        tell(std::move(event));
    }
}

}  // namespace quorvi
