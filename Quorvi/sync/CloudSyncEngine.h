#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/sync/CloudSyncEvent.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

class CloudSyncEngine;
struct CloudEngineCore;

struct PendingDatabaseChange {
    static PendingDatabaseChange saveZone(std::string zone) { return {std::move(zone)}; }
    std::string zone;

    auto operator<=>(const PendingDatabaseChange&) const = default;
};

struct PendingRecordZoneChange {
    static PendingRecordZoneChange saveRecord(CloudRecordID id) { return {std::move(id)}; }
    CloudRecordID id;

    auto operator<=>(const PendingRecordZoneChange&) const = default;
};

// The records of one message to the database.
struct CloudRecordBatch {
    static constexpr std::size_t maximumRecords = 1000;
    static constexpr std::size_t maximumBytes = 1 << 20;  // of payloads; one record may have more

    std::vector<CloudRecord> records;
    // Pending ids without a record: the engine drops them.
    std::vector<CloudRecordID> missing;

    // Fills a batch with the records that `provider` returns for `pending`, in order.
    static CloudRecordBatch make(
        std::span<const CloudRecordID> pending,
        const std::function<std::optional<CloudRecord>(const CloudRecordID&)>& provider);
};

// Receives the engine's events and supplies the records to send. Called on the main thread by the
// engine's tasks, and not after the engine was destroyed. It may call any method of the engine, and
// may destroy it.
class CloudSyncEngineDelegate {
public:
    virtual ~CloudSyncEngineDelegate() = default;

    virtual void handleEvent(CloudSyncEvent event, CloudSyncEngine& engine) = 0;

    // Returns the next records to send, from the oldest pending saves that are not being sent (at
    // most CloudRecordBatch::maximumRecords). nullopt, or an empty batch, ends the sending.
    virtual std::optional<CloudRecordBatch> nextRecordZoneChangeBatch(
        std::span<const CloudRecordID> pending, CloudSyncEngine& engine) = 0;
};

// Exchanges records with the user's cloud database. Keeps the change tokens and the pending saves,
// and orders the operations; the meaning of the records is the delegate's. Fetches and sends only
// when its owner asks for it. Main thread.
class CloudSyncEngine {
public:
    static constexpr std::size_t recordsPerEvent = 200;
    static constexpr std::size_t serializedPendingSaves = 1000;
    // Batches being saved at the same time.
    static constexpr std::size_t batchesUnderWay = 4;

    struct Configuration {
        CloudDatabase& database;
        Scheduler& scheduler;
        Bytes stateSerialization;           // of the last StateUpdate; starts anew if invalid
        CloudSyncEngineDelegate& delegate;  // outlives the engine
    };

    explicit CloudSyncEngine(Configuration configuration);
    // Operations under way end with Cancelled, and the delegate is not called any more.
    ~CloudSyncEngine();
    CloudSyncEngine(const CloudSyncEngine&) = delete;
    CloudSyncEngine& operator=(const CloudSyncEngine&) = delete;

    // The changes to send: an ordered set. A change stays in it until its outcome is reported.
    // Everything but the two list functions takes constant time.
    class State {
    public:
        void add(PendingDatabaseChange change);
        void add(PendingRecordZoneChange change);
        void add(std::span<const PendingRecordZoneChange> changes);
        bool contains(const PendingRecordZoneChange& change) const;
        std::size_t pendingRecordZoneChangeCount() const;
        std::vector<PendingRecordZoneChange> pendingRecordZoneChanges() const;
        std::vector<PendingDatabaseChange> pendingDatabaseChanges() const;

    private:
        friend class CloudSyncEngine;
        explicit State(CloudSyncEngine& engine) : engine_(engine) {}
        CloudSyncEngine& engine_;
    };
    State& state() { return state_; }

    // Fetches all changes of all zones. Throws CloudError if the database does not answer; a zone
    // that can't be fetched is reported by DidFetchRecordZoneChanges only, and tried again by the
    // next fetch. Operations run one after another, in the order called. Throws Cancelled if
    // stopped, and CloudError(operationCancelled) after cancelOperations().
    Task<void> fetchChanges(std::stop_token stop = {});

    // Sends everything pending, zones before records. Throws CloudError if a zone could not be
    // saved or the outcome of a batch is unknown (it stays pending). A refused record is reported
    // by SentRecordZoneChanges only; if it is added again, the next call sends it again.
    Task<void> sendChanges(std::stop_token stop = {});

    // Ends all operations, under way or waiting, at their next suspension.
    void cancelOperations();

private:
    Task<void> checkAccount(std::stop_token stop);
    void accountIs(const std::string& user);

    std::shared_ptr<CloudEngineCore> core_;
    State state_{*this};
    TaskHandle accountCheck_;
    Subscription accountSubscription_;
    TaskScope scope_;  // last
};

}  // namespace quorvi
