#include <algorithm>
#include <deque>
#include <utility>

#include "Quorvi/sync/CloudEngineCore.h"

namespace quorvi {

using namespace cloudEvent;

namespace {

// Calls it at the end of the scope.
template <class F>
struct AtEnd {
    F work;
    ~AtEnd() { work(); }
};
template <class F>
AtEnd(F) -> AtEnd<F>;

}  // namespace

Task<void> CloudSyncEngine::Core::send(std::stop_token stop) {
    tell(WillSendChanges{}, stop);
    auto learning = learnUser(stop);
    co_await learning;
    const bool hadAny = !memory.pendingZones.empty() || pending.size();
    auto zones = sendZones(stop);
    co_await zones;
    auto records = sendRecords(stop);
    co_await records;
    if (hadAny) tellState(stop);
    tell(DidSendChanges{}, stop);
}

Task<void> CloudSyncEngine::Core::sendZones(std::stop_token stop) {
    const auto zones = memory.pendingZones;
    for (const auto& zone : zones) {
        std::optional<CloudError> failure;
        try {
            auto saving = database.saveZone(zone, stop);
            co_await saving;
        } catch (const CloudError& error) {
            failure = error;
        }
        check(stop);
        SentDatabaseChanges event;
        if (failure) {
            event.failed.push_back({zone, *failure});
        } else {
            std::erase(memory.pendingZones, zone);
            event.saved.push_back(zone);
        }
        tell(std::move(event), stop);
        if (failure) throw *failure;
    }
}

std::unique_ptr<CloudSyncEngine::Core::BatchUnderWay> CloudSyncEngine::Core::nextBatch(
    std::size_t limit, std::stop_token stop) {
    for (;;) {
        const auto waiting = pending.oldest(limit);
        if (waiting.empty()) return nullptr;
        check(stop);
        auto batch = delegate.nextRecordZoneChangeBatch(waiting, *engine);
        check(stop);
        if (!batch) return nullptr;
        for (const auto& id : batch->missing) pending.remove(id);
        std::erase_if(batch->records,
                      [this](const CloudRecord& record) { return !pending.begin(record.id); });
        if (batch->records.empty()) {
            if (batch->missing.empty()) return nullptr;
            continue;
        }
        auto underWay = std::make_unique<BatchUnderWay>(*this, batch->records);
        underWay->saving = database.saveRecords(std::move(batch->records), stop);
        underWay->saving.start();
        return underWay;
    }
}

Task<void> CloudSyncEngine::Core::sendRecords(std::stop_token stop) {
    AtEnd release{[this] { pending.releaseRefused(); }};
    std::deque<std::unique_ptr<BatchUnderWay>> underWay;
    std::size_t limit = CloudRecordBatch::maximumRecords;
    std::optional<CloudError> failure;
    for (;;) {
        while (!failure && underWay.size() < batchesUnderWay) {
            auto batch = nextBatch(limit, stop);
            if (!batch) break;
            underWay.push_back(std::move(batch));
            // The next one takes its time, too.
            auto pausing = pause(stop);
            co_await pausing;
            check(stop);
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
        check(stop);
        const auto& ids = batch->ids();
        if (error && error->code() == cloudErrorCode::limitExceeded) {
            // Smaller ones may do; a single record that is too big must not keep back the others.
            limit = std::min(limit, std::max<std::size_t>(ids.size() / 2, 1));
            if (ids.size() == 1) results.push_back({CloudRecord{.id = ids.front()}, error});
        } else if (error && !failure) {
            failure = error;
        }
        auto reporting = report(results, stop);
        co_await reporting;
    }
    if (failure) throw *failure;
}

Task<void> CloudSyncEngine::Core::report(std::vector<CloudSaveResult>& results,
                                         std::stop_token stop) {
    for (std::size_t i = 0; i < results.size();) {
        if (i) {
            auto pausing = pause(stop);
            co_await pausing;
            check(stop);
        }
        SentRecordZoneChanges event;
        for (const auto end = std::min(results.size(), i + recordsPerEvent); i < end; ++i) {
            auto& result = results[i];
            if (result.error) {
                pending.refuse(result.record.id);
                event.failed.push_back({std::move(result.record), std::move(*result.error)});
            } else {
                pending.remove(result.record.id);
                event.saved.push_back(std::move(result.record));
            }
        }
        tell(std::move(event), stop);
    }
}

}  // namespace quorvi
