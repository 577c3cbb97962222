#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/linux/postgres/PostgresSettings.h"
#include "QuorviCore/async/Future.h"

namespace quorvi {

class PostgresJob;
class PostgresWorker;

// The cloud database in PostgreSQL 15 or newer, or what speaks its protocol, over libpq: see
// server/postgresql for the tables and scripts/cloud-server for setting one up. The login role is
// the account.
//
// One thread of its own drives one connection, which is opened when there is something to do and
// kept while there is a subscription. Lives on the main thread, longer than its operations; those
// still under way at its destruction end with Cancelled. The destructor waits for the thread, which
// is at once, or as long as the system looks up the server's name.
class PostgresCloudDatabase : public CloudDatabase {
public:
    // With an address that is refused, every operation throws why. The provider is asked on the
    // database's thread before each connection.
    PostgresCloudDatabase(Scheduler& scheduler, const std::string& address,
                          PostgresPassword password, PostgresTimes times = {});
    ~PostgresCloudDatabase() override;

    // Why an address can't be used, as a sentence for the user; nothing when it can.
    static std::optional<std::string> refusal(const std::string& address);

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

private:
    struct Observers {
        Observable remoteChange;
        Observable accountChange;
    };
    // A page that was asked for before anybody wanted it.
    struct Page {
        std::string zone;
        std::string token;
        std::shared_ptr<PostgresJob> job;
        Promise<CloudRecordChanges> promise;
        TimePoint asked;
    };

    std::unique_ptr<PostgresWorker> startWorker(const std::string& address,
                                                PostgresPassword password, PostgresTimes times);
    PostgresWorker& worker() const;
    Page ask(std::string zone, std::string token);
    std::optional<Page> takeAhead(const std::string& zone, const std::string& token);
    void dropAhead();
    void learnSize(const CloudRecordChanges& page);
    Task<void> changeZone(const char* statement, std::string zone, std::stop_token stop);

    Scheduler& scheduler_;
    const std::shared_ptr<Observers> observers_;
    std::optional<CloudError> refusal_;
    std::optional<Page> ahead_;
    std::size_t pageSize_;
    Subscription dropsAhead_;
    const std::unique_ptr<PostgresWorker> worker_;
};

}  // namespace quorvi
