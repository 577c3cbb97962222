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
    // Pending, but there is no such record any more: the engine forgets them.
    std::vector<CloudRecordID> missing;

    // Takes records from `provider`, oldest change first, until the batch is full.
    static CloudRecordBatch make(
        std::span<const CloudRecordID> pending,
        const std::function<std::optional<CloudRecord>(const CloudRecordID&)>& provider);
};

// Whom the engine tells what it does and asks for what it sends. Called on the main thread, only by
// the engine's tasks, and not after the engine has been destroyed. It may call any method of the
// engine, and destroy it.
class CloudSyncEngineDelegate {
public:
    virtual ~CloudSyncEngineDelegate() = default;

    virtual void handleEvent(CloudSyncEvent event, CloudSyncEngine& engine) = 0;

    // The next records to send. `pending` holds the oldest pending saves that are not being sent,
    // at most CloudRecordBatch::maximumRecords. No batch, or one without records and missing ids,
    // ends the sending.
    virtual std::optional<CloudRecordBatch> nextRecordZoneChangeBatch(
        std::span<const CloudRecordID> pending, CloudSyncEngine& engine) = 0;
};

// Carries changes between a program and its user's cloud database: keeps the tokens, the list of
// what is to be sent, and the order of things, and leaves what the records mean to its delegate.
// It does nothing by itself; its owner says when to fetch and to send. Main thread.
class CloudSyncEngine {
public:
    static constexpr std::size_t recordsPerEvent = 200;
    static constexpr std::size_t serializedPendingSaves = 1000;
    // Batches that are on their way at the same time.
    static constexpr std::size_t batchesUnderWay = 4;

    struct Configuration {
        CloudDatabase& database;
        Scheduler& scheduler;
        Bytes stateSerialization;  // of the last StateUpdate; empty, or not understood: a new start
        CloudSyncEngineDelegate& delegate;  // outlives the engine
        std::string subscriptionID;         // kept for the owner, who saves the subscription
    };

    explicit CloudSyncEngine(Configuration configuration);
    // Operations that are under way end with Cancelled, and nothing is told any more.
    ~CloudSyncEngine();
    CloudSyncEngine(const CloudSyncEngine&) = delete;
    CloudSyncEngine& operator=(const CloudSyncEngine&) = delete;

    // What waits to be sent: an ordered set, in which adding again changes nothing. A change stays
    // in it until its outcome is told. All but pendingRecordZoneChanges() costs the same at any
    // size of the set.
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
    const std::string& subscriptionID() const;

    // Fetches everything that has changed, from all zones. Throws CloudError when the database
    // can't be asked; a zone that can't be fetched is told by DidFetchRecordZoneChanges alone, and
    // is tried again by the next fetch. Operations run one after another, in the order called.
    // Throws Cancelled when stopped, and CloudError(operationCancelled) after cancelOperations().
    Task<void> fetchChanges(std::stop_token stop = {});

    // Sends all that is pending: zones first, then records in batches. Throws CloudError when a
    // zone could not be saved or nothing can be said about a batch (which then stays pending); a
    // record that was refused is told by SentRecordZoneChanges alone. A record that was refused is
    // not sent again by the same call, also when it has been added again.
    Task<void> sendChanges(std::stop_token stop = {});

    // Ends the operations that are under way or waiting, at their next suspension.
    void cancelOperations();

private:
    struct Core;

    Task<void> checkAccount(std::stop_token stop);
    void accountIs(const std::string& user);

    std::shared_ptr<Core> core_;
    State state_{*this};
    TaskHandle accountCheck_;
    Subscription accountSubscription_;
    TaskScope scope_;  // last
};

}  // namespace quorvi
