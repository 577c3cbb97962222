#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "QuorviCore/base/Bytes.h"

// What CloudSyncEngine tells its delegate.
namespace quorvi::cloudEvent {

// The engine's memory as it is to be handed back at its next construction: how far it has fetched
// from each zone, and what waits to be sent. Small: of the pending saves only the oldest are in it.
struct StateUpdate {
    Bytes serialization;
};

struct AccountChange {
    enum class Kind { signIn, signOut, switchAccounts };
    Kind kind = Kind::signIn;
    std::string previousUser;  // record name; empty with signIn
    std::string currentUser;   // record name; empty with signOut
};

struct FetchedDatabaseChanges {
    std::vector<std::string> modified;  // zones
    std::vector<std::string> deleted;
};

// At most CloudSyncEngine::recordsPerEvent of them; a long fetch makes many such events, each in a
// turn of its own. A record may come more than once, also one that this machine has saved itself.
struct FetchedRecordZoneChanges {
    std::string zone;
    std::vector<CloudRecord> modifications;
    std::vector<CloudRecordID> deletions;
};

struct FailedZoneSave {
    std::string zone;
    CloudError error;
};

struct SentDatabaseChanges {
    std::vector<std::string> saved;
    std::vector<FailedZoneSave> failed;  // these stay pending
};

// The record as it was to be saved, and why it wasn't.
struct FailedRecordSave {
    CloudRecord record;
    CloudError error;
};

// None of these records is pending any more, the failed ones neither.
struct SentRecordZoneChanges {
    std::vector<CloudRecord> saved;  // with their new change tags
    std::vector<FailedRecordSave> failed;
};

struct WillFetchChanges {};
struct WillFetchRecordZoneChanges {
    std::string zone;
};
struct DidFetchRecordZoneChanges {
    std::string zone;
    std::optional<CloudError> error;  // what was fetched before it stands
};
struct DidFetchChanges {};
struct WillSendChanges {};
struct DidSendChanges {};

}  // namespace quorvi::cloudEvent

namespace quorvi {

using CloudSyncEvent =
    std::variant<cloudEvent::StateUpdate, cloudEvent::AccountChange,
                 cloudEvent::FetchedDatabaseChanges, cloudEvent::FetchedRecordZoneChanges,
                 cloudEvent::SentDatabaseChanges, cloudEvent::SentRecordZoneChanges,
                 cloudEvent::WillFetchChanges, cloudEvent::WillFetchRecordZoneChanges,
                 cloudEvent::DidFetchRecordZoneChanges, cloudEvent::DidFetchChanges,
                 cloudEvent::WillSendChanges, cloudEvent::DidSendChanges>;

}  // namespace quorvi
