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

// A record with the one field that this program uses.
struct CloudRecord {
    CloudRecordID id;
    std::string type;
    std::optional<Bytes> payload;
    // Which version of the record this is, opaque; empty for one that was never saved. A save is
    // refused unless it names the version that the database holds.
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

// What the database refuses with.
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
    // How long the database wants to be left alone.
    const std::optional<Duration>& retryAfter() const { return retryAfter_; }
    // With serverRecordChanged: what the database holds.
    const std::optional<CloudRecord>& serverRecord() const { return serverRecord_; }

private:
    int code_;
    std::string description_;
    std::optional<Duration> retryAfter_;
    std::optional<CloudRecord> serverRecord_;
};

// What became of one record that was to be saved: the record with its new change tag, or why not.
struct CloudSaveResult {
    CloudRecord record;
    std::optional<CloudError> error;
};

// Zones that changed or are gone since a token was handed out.
struct CloudZoneChanges {
    std::vector<std::string> modified;
    std::vector<std::string> deleted;
    std::string token;  // opaque; asks for what comes after
};

// The records of a zone that changed since a token was handed out, each in its latest version.
struct CloudRecordChanges {
    std::vector<CloudRecord> modified;
    std::vector<CloudRecordID> deleted;
    std::string token;
    bool more = false;  // there is more to ask for at once
};

// The user's private database, shared by all their machines. Operations are called on the main
// thread, do their work elsewhere and resume on the main thread; they throw CloudError, and
// Cancelled when stopped. Several may be under way.
class CloudDatabase {
public:
    virtual ~CloudDatabase() = default;

    virtual Task<CloudAccountStatus> accountStatus(std::stop_token stop) = 0;
    // Who the data belongs to: the same on all machines of one account.
    virtual Task<std::string> userRecordName(std::stop_token stop) = 0;

    // Saving a zone that exists is no error, nor is deleting one that doesn't. Deleting one takes
    // its records along: one of that name that is made later is another zone, for which tokens of
    // the one before are expired and change tags unknown.
    virtual Task<void> saveZone(std::string zone, std::stop_token stop) = 0;
    virtual Task<void> deleteZone(std::string zone, std::stop_token stop) = 0;

    // One result for each record, in their order: serverRecordChanged when the tag is not that of
    // the version that the database holds, unknownItem when there is a tag but no such record,
    // zoneNotFound. Throws only when nothing can be said about any; limitExceeded then asks for
    // fewer at a time.
    virtual Task<std::vector<CloudSaveResult>> saveRecords(std::vector<CloudRecord> records,
                                                           std::stop_token stop) = 0;
    // Throws unknownItem or zoneNotFound when there is no such record or zone.
    virtual Task<CloudRecord> fetchRecord(CloudRecordID id, std::stop_token stop) = 0;

    // What has changed since the token was handed out, also by this machine; in pages of the
    // database's choice, of some 2,000 records at most. An empty token asks for everything. A token
    // that the database no longer understands gives changeTokenExpired; a zone that is gone
    // zoneNotFound.
    virtual Task<CloudZoneChanges> zoneChanges(std::string token, std::stop_token stop) = 0;
    virtual Task<CloudRecordChanges> recordChanges(std::string zone, std::string token,
                                                   std::stop_token stop) = 0;

    // Asks to be told when another machine has changed something; onRemoteChange() observers are
    // then told, perhaps late and perhaps without need.
    virtual Task<void> saveSubscription(std::string id, std::stop_token stop) = 0;
    [[nodiscard]] virtual Subscription onRemoteChange(std::function<void()> observer) = 0;

    // The account may have become another one.
    [[nodiscard]] virtual Subscription onAccountChange(std::function<void()> observer) = 0;
};

}  // namespace quorvi
