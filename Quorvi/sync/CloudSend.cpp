#include "Quorvi/sync/CloudSend.h"

#include <algorithm>
#include <deque>
#include <utility>

namespace quorvi {

using namespace cloudEvent;

namespace {

// Calls `work` at the end of the scope.
template <class F>
struct AtEnd {
    F work;
    ~AtEnd() { work(); }
};
template <class F>
AtEnd(F) -> AtEnd<F>;

}  // namespace

// Records on their way to the database. Those without a reported outcome when it is destroyed wait
// again.
class CloudSend::BatchUnderWay {
public:
    BatchUnderWay(CloudEngineCore& core, const std::vector<CloudRecord>& records) : core_(core) {
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
    CloudEngineCore& core_;
    std::vector<CloudRecordID> ids_;
};

Task<void> CloudSend::run() {
    tell(WillSendChanges{});
    auto learning = core_.learnUser(stop_);
    co_await learning;
    const bool hadAny = !core_.memory.pendingZones.empty() || core_.pending.size();
    auto zones = sendZones();
    co_await zones;
    auto records = sendRecords();
    co_await records;
    if (hadAny) core_.tellState(stop_);
    tell(DidSendChanges{});
}

Task<void> CloudSend::sendZones() {
    const auto zones = core_.memory.pendingZones;
    for (const auto& zone : zones) {
        std::optional<CloudError> failure;
        try {
            auto saving = core_.database.saveZone(zone, stop_);
            co_await saving;
        } catch (const CloudError& error) {
            failure = error;
        }
        core_.check(stop_);
        SentDatabaseChanges event;
        if (failure) {
            event.failed.push_back({zone, *failure});
        } else {
            std::erase(core_.memory.pendingZones, zone);
            event.saved.push_back(zone);
        }
        tell(std::move(event));
        if (failure) throw *failure;
    }
}

std::unique_ptr<CloudSend::BatchUnderWay> CloudSend::nextBatch(std::size_t limit) {
    for (;;) {
        const auto waiting = core_.pending.oldest(limit);
        if (waiting.empty()) return nullptr;
        core_.check(stop_);
        auto batch = core_.delegate.nextRecordZoneChangeBatch(waiting, *core_.engine);
        core_.check(stop_);
        if (!batch) return nullptr;
        for (const auto& id : batch->missing) core_.pending.remove(id);
        std::erase_if(batch->records, [this](const CloudRecord& record) {
            return !core_.pending.begin(record.id);
        });
        if (batch->records.empty()) {
            if (batch->missing.empty()) return nullptr;
            continue;
        }
        auto underWay = std::make_unique<BatchUnderWay>(core_, batch->records);
        underWay->saving = core_.database.saveRecords(std::move(batch->records), stop_);
        underWay->saving.start();
        return underWay;
    }
}

Task<void> CloudSend::sendRecords() {
    AtEnd release{[this] { core_.pending.releaseRefused(); }};
    std::deque<std::unique_ptr<BatchUnderWay>> underWay;
    std::size_t limit = CloudRecordBatch::maximumRecords;
    std::optional<CloudError> failure;
    for (;;) {
        while (!failure && underWay.size() < CloudSyncEngine::batchesUnderWay) {
            auto batch = nextBatch(limit);
            if (!batch) break;
            underWay.push_back(std::move(batch));
            // Preparing the next batch takes time, too.
            auto pausing = core_.pause(stop_);
            co_await pausing;
        }
        if (underWay.empty()) break;
        const auto batch = std::move(underWay.front());
        underWay.pop_front();
        std::vector<CloudSaveResult> results;
        std::optional<CloudError> error;
        try {
            results = co_await batch->saving;
        } catch (const CloudError& thrown) {
            error = thrown;
        }
        core_.check(stop_);
        const auto& ids = batch->ids();
        if (error && error->code() == cloudErrorCode::limitExceeded) {
            // Smaller batches may do; one record that is too large must not hold up the others.
            limit = std::min(limit, std::max<std::size_t>(ids.size() / 2, 1));
            if (ids.size() == 1) results.push_back({CloudRecord{.id = ids.front()}, error});
        } else if (error && !failure) {
            failure = error;
        }
        auto reporting = report(results);
        co_await reporting;
    }
    if (failure) throw *failure;
}

Task<void> CloudSend::report(std::vector<CloudSaveResult>& results) {
    for (std::size_t i = 0; i < results.size();) {
        if (i) {
            auto pausing = core_.pause(stop_);
            co_await pausing;
        }
        SentRecordZoneChanges event;
        for (const auto end = std::min(results.size(), i + CloudSyncEngine::recordsPerEvent);
             i < end; ++i) {
            auto& result = results[i];
            if (result.error) {
                core_.pending.refuse(result.record.id);
                event.failed.push_back({std::move(result.record), std::move(*result.error)});
            } else {
                core_.pending.remove(result.record.id);
                event.saved.push_back(std::move(result.record));
            }
        }
        tell(std::move(event));
    }
}

}  // namespace quorvi
