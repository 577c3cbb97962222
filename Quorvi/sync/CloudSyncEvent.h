#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "QuorviCore/base/Bytes.h"

// The events of CloudSyncEngine.
namespace quorvi::cloudEvent {

// The engine's state, to be passed to its next construction: how far each zone has been fetched,
// and the zones and records to be sent. Small: only the oldest pending saves are in it.
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

// At most CloudSyncEngine::recordsPerEvent changes; a long fetch reports many such events, each in
// a turn of its own. A record may come more than once, and may be one that this machine saved.
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

// The record that was not saved, and why.
struct FailedRecordSave {
    CloudRecord record;
    CloudError error;
};

// None of these records is pending any more, not even the failed ones.
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
    std::optional<CloudError> error;  // pages delivered before it are valid
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
