#pragma once

#include <list>
#include <memory>
#include <string>
#include <vector>

#include "Quorvi/sync/CloudEngineState.h"
#include "Quorvi/sync/CloudSyncEngine.h"
#include "Quorvi/sync/PendingSaves.h"
#include "QuorviCore/async/Future.h"

namespace quorvi {

// The part of CloudSyncEngine that its tasks hold on to: it outlives the engine for as long as one
// of them does, and then keeps them from touching anything else.
struct CloudSyncEngine::Core {
    class Operation;
    class BatchUnderWay;

    explicit Core(CloudSyncEngine& engine_, Configuration& configuration);

    static Task<void> run(std::shared_ptr<Core> core, std::stop_token stop,
                          Task<void> (Core::*body)(std::stop_token));
    Task<void> fetch(std::stop_token stop);
    Task<void> send(std::stop_token stop);

    Task<void> fetchZoneList(std::stop_token stop);
    Task<void> fetchZone(std::string zone, std::stop_token stop);
    Task<void> fetchPages(const std::string& zone, std::stop_token stop);
    Task<void> deliver(const std::string& zone, CloudRecordChanges& page, std::stop_token stop);
    Task<void> sendZones(std::stop_token stop);
    Task<void> sendRecords(std::stop_token stop);
    Task<void> report(std::vector<CloudSaveResult>& results, std::stop_token stop);
    // The next batch that the delegate has, with its records under way; none ends the sending.
    std::unique_ptr<BatchUnderWay> nextBatch(std::size_t limit, std::stop_token stop);
    Task<void> learnUser(std::stop_token stop);

    // Throws Cancelled when the engine is gone or the operation stopped.
    void check(const std::stop_token& stop) const;
    // check() before and after: the delegate may have ended everything.
    void tell(CloudSyncEvent event, const std::stop_token& stop);
    void tellState(const std::stop_token& stop);
    // Lets the main thread do something else.
    Task<void> pause(std::stop_token stop);

    CloudSyncEngine* engine;  // null when it is gone
    CloudDatabase& database;
    Scheduler& scheduler;
    CloudSyncEngineDelegate& delegate;
    const std::string subscriptionID;

    CloudEngineState memory;  // its pendingRecords are in `pending` instead
    PendingSaves pending;
    bool isSignedOut = false;          // memory.user is then the last one
    std::list<Operation*> operations;  // the first one has its turn, the others wait
};

// One call of fetchChanges() or sendChanges(), while its task lives.
class CloudSyncEngine::Core::Operation {
public:
    explicit Operation(Core& core) : core_(core), turn_(core.scheduler) {
        core_.operations.push_back(this);
        if (core_.operations.size() == 1) turn_.resolve();
    }
    ~Operation() {
        const bool hadTurn = core_.operations.front() == this;
        core_.operations.remove(this);
        if (hadTurn && !core_.operations.empty()) core_.operations.front()->turn_.resolve();
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    std::stop_token token() const { return stop_.get_token(); }
    void stop() { stop_.request_stop(); }
    void cancel() {
        isCancelled_ = true;
        stop();
    }
    bool isCancelled() const { return isCancelled_; }
    Future<void> turn() { return turn_.future(token()); }

private:
    Core& core_;
    std::stop_source stop_;
    bool isCancelled_ = false;
    Promise<void> turn_;
};

// Records on their way to the database. Those whose outcome has not been told when it is dropped
// wait again.
class CloudSyncEngine::Core::BatchUnderWay {
public:
    BatchUnderWay(Core& core, const std::vector<CloudRecord>& records) : core_(core) {
        for (const auto& record : records) ids_.push_back(record.id);
    }
    ~BatchUnderWay() {
        for (auto id = ids_.rbegin(); id != ids_.rend(); ++id) core_.pending.giveBack(*id);
    }
    BatchUnderWay(const BatchUnderWay&) = delete;
    BatchUnderWay& operator=(const BatchUnderWay&) = delete;

    const std::vector<CloudRecordID>& ids() const { return ids_; }
    Task<std::vector<CloudSaveResult>> saving;

private:
    Core& core_;
    std::vector<CloudRecordID> ids_;
};

}  // namespace quorvi
