#pragma once

#include <list>
#include <stop_token>

#include "Quorvi/sync/CloudEngineState.h"
#include "Quorvi/sync/CloudSyncEngine.h"
#include "Quorvi/sync/PendingSaves.h"
#include "QuorviCore/async/Future.h"

namespace quorvi {

// The part of CloudSyncEngine that its operations hold on to. It may outlive the engine; then it
// keeps them from touching anything else. Main thread.
struct CloudEngineCore {
    class Operation;

    CloudEngineCore(CloudSyncEngine& engine_, CloudSyncEngine::Configuration& configuration);

    // Both throw Cancelled if the engine is gone or the operation was stopped. tell() checks before
    // and after the call, since the delegate may end everything.
    void check(const std::stop_token& stop) const;
    void tell(CloudSyncEvent event, const std::stop_token& stop);

    void tellState(const std::stop_token& stop);
    // Asks who the user is, once.
    Task<void> learnUser(std::stop_token stop);
    // Gives other work on the main thread a turn, and checks after it.
    Task<void> pause(std::stop_token stop);

    CloudSyncEngine* engine;  // null when it is gone
    CloudDatabase& database;
    Scheduler& scheduler;
    CloudSyncEngineDelegate& delegate;

    CloudEngineState memory;  // without pendingRecords, which are in `pending`
    PendingSaves pending;
    bool isSignedOut = false;          // memory.user is then the last one
    std::list<Operation*> operations;  // the first one runs, the others wait
};

// One call of fetchChanges() or sendChanges(); lives as long as its task. Operations run one after
// another.
class CloudEngineCore::Operation {
public:
    explicit Operation(CloudEngineCore& core);
    ~Operation();
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    std::stop_token token() const { return stop_.get_token(); }
    void stop() { stop_.request_stop(); }
    void cancel();
    bool isCancelled() const { return isCancelled_; }
    // Ready when all earlier operations have ended.
    Future<void> turn() { return turn_.future(token()); }

private:
    CloudEngineCore& core_;
    std::stop_source stop_;
    bool isCancelled_ = false;
    Promise<void> turn_;
};

}  // namespace quorvi
