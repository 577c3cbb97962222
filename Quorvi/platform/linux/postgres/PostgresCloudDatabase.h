#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/linux/postgres/PostgresSettings.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Future.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

class PostgresJob;
class PostgresWorker;

// A cloud database in PostgreSQL 15 or newer, or a compatible server, over libpq. server/postgresql
// has the tables, scripts/cloud-server sets a server up. The login role is the account.
//
// Owns a thread that drives one connection, which is opened on demand and kept while there is a
// subscription. Main thread; outlives its operations, of which the pending ones end with Cancelled
// at its destruction. The thread is joined, which may take as long as looking up the server's name,
// by the destructor or on the executor for that.
class PostgresCloudDatabase : public CloudDatabase {
public:
    // If the address is refused, every operation throws the reason. The password is requested on
    // the thread of the database before each connection. `end`: where the thread is joined;
    // outlives the database.
    PostgresCloudDatabase(Scheduler& scheduler, const std::string& address,
                          PostgresPassword password, PostgresTimes times = {},
                          Executor* end = nullptr);
    ~PostgresCloudDatabase() override;

    // Returns why an address cannot be used; nullopt if it can.
    static std::optional<Message> refusal(const std::string& address);

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
    // A prefetched page.
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
    std::unique_ptr<PostgresWorker> worker_;
    Executor* const end_;
};

}  // namespace quorvi
