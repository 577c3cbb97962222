#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// A name in the database: a record's within its zone.
struct CloudRecordID {
    std::string zone;
    std::string name;

    auto operator<=>(const CloudRecordID&) const = default;
};

// A record with the single field that this program uses.
struct CloudRecord {
    CloudRecordID id;
    std::string type;
    std::optional<Bytes> payload;
    // Opaque; identifies the version of the record, empty for one that was never saved. A save is
    // refused unless it has the tag of the version in the database.
    std::string changeTag;

    bool operator==(const CloudRecord&) const = default;
};

enum class CloudAccountStatus {
    available,
    noAccount,
    restricted,
    couldNotDetermine,
    temporarilyUnavailable,
};

// Numeric codes of CloudError.
namespace cloudErrorCode {
inline constexpr int internalError = 1;
inline constexpr int partialFailure = 2;
inline constexpr int networkUnavailable = 3;
inline constexpr int networkFailure = 4;
inline constexpr int badContainer = 5;
inline constexpr int serviceUnavailable = 6;
inline constexpr int requestRateLimited = 7;
inline constexpr int missingEntitlement = 8;
inline constexpr int notAuthenticated = 9;
inline constexpr int permissionFailure = 10;
inline constexpr int unknownItem = 11;
inline constexpr int invalidArguments = 12;
inline constexpr int serverRecordChanged = 14;
inline constexpr int operationCancelled = 20;
inline constexpr int changeTokenExpired = 21;
inline constexpr int zoneBusy = 23;
inline constexpr int quotaExceeded = 25;
inline constexpr int zoneNotFound = 26;
inline constexpr int limitExceeded = 27;
}  // namespace cloudErrorCode

// A failure of the database. what() is the technical reason; the interface shows cloudMessage().
class CloudError : public std::exception {
public:
    explicit CloudError(int code, std::string description = {},
                        std::optional<Duration> retryAfter = std::nullopt,
                        std::optional<CloudRecord> serverRecord = std::nullopt)
        : code_(code),
          description_(std::move(description)),
          retryAfter_(retryAfter),
          serverRecord_(std::move(serverRecord)) {}

    int code() const { return code_; }
    const char* what() const noexcept override { return description_.c_str(); }
    // How long to wait before the next request, if the database says so.
    const std::optional<Duration>& retryAfter() const { return retryAfter_; }
    // With serverRecordChanged: the version in the database.
    const std::optional<CloudRecord>& serverRecord() const { return serverRecord_; }

private:
    int code_;
    std::string description_;
    std::optional<Duration> retryAfter_;
    std::optional<CloudRecord> serverRecord_;
};

// The outcome of saving one record: the record with its new change tag, or the error.
struct CloudSaveResult {
    CloudRecord record;
    std::optional<CloudError> error;
};

// The zones that have changed or been deleted since a token was issued.
struct CloudZoneChanges {
    std::vector<std::string> modified;
    std::vector<std::string> deleted;
    std::string token;  // opaque; asks for later changes
};

// The records of a zone that have changed since a token was issued, in their latest versions.
struct CloudRecordChanges {
    std::vector<CloudRecord> modified;
    std::vector<CloudRecordID> deleted;
    std::string token;
    bool more = false;  // another page is available
};

// The user's private database, shared by all their machines. Operations are called and resumed on
// the main thread, never block it, and may run concurrently. They throw CloudError, and Cancelled
// if stopped.
class CloudDatabase {
public:
    virtual ~CloudDatabase() = default;

    virtual Task<CloudAccountStatus> accountStatus(std::stop_token stop) = 0;
    // Returns the owner of the data: the same name on all machines of one account.
    virtual Task<std::string> userRecordName(std::stop_token stop) = 0;

    // Saving an existing zone or deleting a missing one succeeds. Deleting a zone deletes its
    // records. A later zone of the same name is another one: tokens of the old one are expired,
    // change tags unknown.
    virtual Task<void> saveZone(std::string zone, std::stop_token stop) = 0;
    virtual Task<void> deleteZone(std::string zone, std::stop_token stop) = 0;

    // Returns one result for each record, in order. Errors of single records: serverRecordChanged
    // (the tag is not that of the version in the database), unknownItem (a tag, but no such
    // record), zoneNotFound. Throws only if the outcome of all is unknown; limitExceeded asks for
    // smaller batches.
    virtual Task<std::vector<CloudSaveResult>> saveRecords(std::vector<CloudRecord> records,
                                                           std::stop_token stop) = 0;
    // Throws unknownItem or zoneNotFound if there is no such record or zone.
    virtual Task<CloudRecord> fetchRecord(CloudRecordID id, std::stop_token stop) = 0;

    // Returns the changes since the token was issued, including this machine's own, in pages of
    // some 2,000 records at most. An empty token asks for everything. Throws changeTokenExpired for
    // a token that the database no longer understands, zoneNotFound for a deleted zone.
    virtual Task<CloudZoneChanges> zoneChanges(std::string token, std::stop_token stop) = 0;
    virtual Task<CloudRecordChanges> recordChanges(std::string zone, std::string token,
                                                   std::stop_token stop) = 0;

    // Asks for notifications of other machines' changes. onRemoteChange() observers are then
    // called, perhaps late and perhaps without a change.
    virtual Task<void> saveSubscription(std::string id, std::stop_token stop) = 0;
    [[nodiscard]] virtual Subscription onRemoteChange(std::function<void()> observer) = 0;

    // Observers are called when the account may have changed.
    [[nodiscard]] virtual Subscription onAccountChange(std::function<void()> observer) = 0;
};

}  // namespace quorvi
