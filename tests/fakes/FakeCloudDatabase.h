#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "QuorviCore/async/Future.h"
#include "QuorviCore/async/Lifetime.h"

namespace quorvi::test {

class FakeCloudDatabase;

// The cloud that several machines share, in memory.
class FakeCloudServer {
public:
    explicit FakeCloudServer(Scheduler& scheduler) : scheduler_(scheduler) {}
    FakeCloudServer(const FakeCloudServer&) = delete;
    FakeCloudServer& operator=(const FakeCloudServer&) = delete;

    // Makes all tokens issued so far expire.
    void expireTokens() { ++tokenEra_; }
    // Deletes a zone and notifies the machines.
    void resetZone(const std::string& user, const std::string& zone);
    // Returns nullopt if there is no such record.
    std::optional<CloudRecord> record(const std::string& user, const CloudRecordID& id) const;
    // Returns all records of a zone by name; empty if there is no such zone.
    std::map<std::string, CloudRecord> records(const std::string& user,
                                               const std::string& zone) const;
    std::vector<std::string> zones(const std::string& user) const;
    // Deletes a record and notifies the machines.
    void deleteRecord(const std::string& user, const CloudRecordID& id);

private:
    friend class FakeCloudDatabase;

    struct Stored {
        CloudRecord record;
        std::uint64_t sequence = 0;
        bool isDeleted = false;
    };
    struct Zone {
        std::uint64_t generation = 0;  // differs for a zone that was deleted and made again
        std::map<std::string, Stored> records;
        std::map<std::uint64_t, std::string> changes;  // sequence to name, each name once
    };
    struct Account {
        std::map<std::string, Zone> zones;
        std::map<std::string, std::uint64_t> modified;  // zone to the sequence of its last change
        std::map<std::string, std::uint64_t> deleted;
    };

    Account& account(const std::string& user) { return accounts_[user]; }
    void put(Account& account, const std::string& zone, CloudRecord record, bool isDeleted);
    void removeZone(Account& account, const std::string& zone);
    void push(const std::string& user, const FakeCloudDatabase* author);

    Scheduler& scheduler_;
    std::uint64_t sequence_ = 0;
    std::uint64_t tokenEra_ = 0;
    std::map<std::string, Account> accounts_;
    std::set<FakeCloudDatabase*> devices_;
    Lifetime lifetime_;
};

enum class CloudOperation {
    accountStatus,
    userRecordName,
    saveZone,
    deleteZone,
    saveRecords,
    fetchRecord,
    zoneChanges,
    recordChanges,
    saveSubscription,
};

// One machine's access to the server, with the faults that a test asks for. Every operation takes
// at least one turn of the scheduler.
class FakeCloudDatabase final : public CloudDatabase {
public:
    FakeCloudDatabase(Scheduler& scheduler, FakeCloudServer& server, std::string user);
    ~FakeCloudDatabase() override;

    Task<CloudAccountStatus> accountStatus(std::stop_token stop) override;
    Task<std::string> userRecordName(std::stop_token stop) override;
    Task<void> saveZone(std::string zone, std::stop_token stop) override;
    Task<void> deleteZone(std::string zone, std::stop_token stop) override;
    Task<std::vector<CloudSaveResult>> saveRecords(std::vector<CloudRecord> records,
                                                   std::stop_token stop) override;
    Task<CloudRecord> fetchRecord(CloudRecordID id, std::stop_token stop) override;
    Task<CloudZoneChanges> zoneChanges(std::string token, std::stop_token stop) override;
    Task<CloudRecordChanges> recordChanges(std::string zone, std::string token,
                                           std::stop_token stop) override;
    Task<void> saveSubscription(std::string id, std::stop_token stop) override;
    Subscription onRemoteChange(std::function<void()> observer) override;
    Subscription onAccountChange(std::function<void()> observer) override;

    // --- the test's side ---

    // The next call of the operation throws the error, or all calls do.
    void fail(CloudOperation operation, CloudError error, bool always = false) {
        failures_.insert_or_assign(operation, std::pair(std::move(error), always));
    }
    // The next save of this record is refused.
    void failRecord(const std::string& name, CloudError error) {
        recordFailures_.insert_or_assign(name, std::move(error));
    }

    // Calls of the operation wait until release().
    void hold(CloudOperation operation) { gates_.try_emplace(operation); }
    void release(CloudOperation operation);

    // Signs another user in, or nobody (empty), and notifies observers.
    void signIn(const std::string& user);
    void signOut() { signIn({}); }
    // Overrides the status that follows from the user.
    std::optional<CloudAccountStatus> status;

    Duration delay{};              // of every operation
    std::size_t pageSize = 400;    // records of one page
    bool damagesPayloads = false;  // of records that are fetched by their name

    std::map<CloudOperation, int> calls;
    std::vector<std::size_t> savedBatchSizes;
    std::set<std::string> subscriptions;

private:
    friend class FakeCloudServer;

    Task<void> arrive(CloudOperation operation, std::stop_token stop);
    FakeCloudServer::Account& account();
    CloudSaveResult save(CloudRecord record);
    std::string token(std::uint64_t generation, std::uint64_t sequence) const;
    // Returns the sequence of the token. Throws changeTokenExpired.
    std::uint64_t sequenceOf(const std::string& token, std::uint64_t generation) const;

    Scheduler& scheduler_;
    FakeCloudServer& server_;
    std::string user_;
    std::map<CloudOperation, std::pair<CloudError, bool>> failures_;
    std::map<std::string, CloudError> recordFailures_;
    std::map<CloudOperation, std::vector<std::shared_ptr<Promise<void>>>> gates_;
    Observable remoteChange_;
    Observable accountChange_;
};

}  // namespace quorvi::test
