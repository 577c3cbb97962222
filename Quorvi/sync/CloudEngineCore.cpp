#include "Quorvi/sync/CloudEngineCore.h"

#include <utility>

#include "QuorviCore/async/Async.h"

namespace quorvi {

CloudEngineCore::CloudEngineCore(CloudSyncEngine& engine_,
                                 CloudSyncEngine::Configuration& configuration)
    : engine(&engine_),
      database(configuration.database),
      scheduler(configuration.scheduler),
      delegate(configuration.delegate),
      memory(
          CloudEngineState::decode(configuration.stateSerialization).value_or(CloudEngineState{})) {
    for (auto& id : memory.pendingRecords) pending.add(std::move(id));
    memory.pendingRecords.clear();
}

void CloudEngineCore::check(const std::stop_token& stop) const {
    if (!engine) throw Cancelled{};
    throwIfStopped(stop);
}

void CloudEngineCore::tell(CloudSyncEvent event, const std::stop_token& stop) {
    check(stop);
    delegate.handleEvent(std::move(event), *engine);
    check(stop);
}

void CloudEngineCore::tellState(const std::stop_token& stop) {
    auto state = memory;
    state.pendingRecords = pending.all(CloudSyncEngine::serializedPendingSaves);
    tell(cloudEvent::StateUpdate{state.encoded()}, stop);
}

Task<void> CloudEngineCore::learnUser(std::stop_token stop) {
    if (!memory.user.empty()) co_return;
    auto asking = database.userRecordName(stop);
    auto user = co_await asking;
    check(stop);
    memory.user = user;
    tell(cloudEvent::AccountChange{cloudEvent::AccountChange::Kind::signIn, {}, std::move(user)},
         stop);
}

Task<void> CloudEngineCore::pause(std::stop_token stop) {
    Promise<void> promise(scheduler);
    auto turn = promise.future(stop);
    scheduler.post([promise]() mutable { promise.resolve(); });
    co_await turn;
    check(stop);
}

CloudEngineCore::Operation::Operation(CloudEngineCore& core) : core_(core), turn_(core.scheduler) {
    core_.operations.push_back(this);
    if (core_.operations.size() == 1) turn_.resolve();
}

CloudEngineCore::Operation::~Operation() {
    const bool hadTurn = core_.operations.front() == this;
    core_.operations.remove(this);
    if (hadTurn && !core_.operations.empty()) core_.operations.front()->turn_.resolve();
}

void CloudEngineCore::Operation::cancel() {
    isCancelled_ = true;
    stop();
}

}  // namespace quorvi
