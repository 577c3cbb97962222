#pragma once

#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

#include "Quorvi/sync/CloudSyncEngine.h"
#include "Quorvi/sync/GuardedArchive.h"
#include "Quorvi/sync/LocalCapture.h"
#include "Quorvi/sync/StoreUpdater.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// The delegate of the session's engine: offers pending items to it, supplies their records, and
// merges what the cloud has into the ledger. Main thread; part of AccountSync.
class ItemExchange final : public CloudSyncEngineDelegate {
public:
    ItemExchange(GuardedArchive& archive, LocalCapture& capture, StoreUpdater& updater,
                 Scheduler& scheduler);

    // Set before use().
    std::function<bool()> canRun;           // false: events are ignored, nothing is offered
    std::function<void(Message)> onStatus;  // of failures and of a changed account
    std::function<void()> onAccountChange;  // another account, or none, is signed in
    std::function<void()> onReset;          // the zone was deleted in the cloud

    // Exchanges items with this new engine, which has no pending items yet; with none if null.
    void use(CloudSyncEngine* engine);

    void addPending(const SharedString& id);
    // Offers the pending items to the engine if they are few; otherwise the next pass does.
    void offerPending();
    // Offers all pending items, in several turns.
    Task<void> offerAll(std::stop_token stop);

    // Fetches all changes. Throws CloudError, also if only a single zone could not be fetched.
    Task<void> fetch(std::shared_ptr<CloudSyncEngine> engine, std::stop_token stop);

private:
    // The number of ids offered in one turn of the main thread.
    static constexpr std::size_t idsPerTurn = 2000;

    bool mayOffer() const;
    void offerSome();

    void handleEvent(CloudSyncEvent event, CloudSyncEngine& engine) override;
    void handle(const cloudEvent::StateUpdate& event);
    void handle(const cloudEvent::AccountChange& event);
    void handle(const cloudEvent::FetchedDatabaseChanges& event);
    void handle(const cloudEvent::FetchedRecordZoneChanges& event);
    void handle(const cloudEvent::SentRecordZoneChanges& event);
    void handle(const cloudEvent::DidFetchRecordZoneChanges& event);
    template <class Other>
    void handle(const Other&) {}
    void handleFailedSave(const cloudEvent::FailedRecordSave& save);
    void handleDeletion(const CloudRecordID& id);
    bool merge(const CloudRecord& record);
    void reclaim(const CloudRecord& record);
    void noteSaved(const CloudRecord& record);
    void finishMerging();
    std::optional<CloudRecordBatch> nextRecordZoneChangeBatch(
        std::span<const CloudRecordID> pending, CloudSyncEngine& engine) override;

    GuardedArchive& archive_;
    LocalCapture& capture_;
    StoreUpdater& updater_;
    Scheduler& scheduler_;
    CloudSyncEngine* engine_ = nullptr;
    std::vector<SharedString> unoffered_;     // pending ids that the engine does not know
    std::optional<CloudError> fetchFailure_;  // of a zone, in the present fetch
};

}  // namespace quorvi
