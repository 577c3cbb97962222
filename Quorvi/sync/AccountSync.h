#pragma once

#include <cstddef>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/platform/SyncControl.h"
#include "Quorvi/sync/Activity.h"
#include "Quorvi/sync/CloudSyncEngine.h"
#include "Quorvi/sync/StoreUpdate.h"
#include "Quorvi/sync/SyncArchive.h"
#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/sync/LocalSnapshot.h"

namespace quorvi {

// Keeps the history, the correction rules and the synchronised settings the same on all machines
// of one account. Decides when local changes are taken in, when the cloud is talked to, when what
// came from there may be written into the stores, and what the user is told. Recordings and keys
// never pass through it.
//
// Everything happens on the main thread, in small pieces: reading and writing the archive, and
// working out what a large change means, is done on the executor. Lives as long as the process;
// shutdown() comes before its destruction.
class AccountSync final : public SyncControl, private CloudSyncEngineDelegate {
public:
    static constexpr std::string_view zoneName = "QuorviAccount";
    static constexpr std::string_view recordType = "QuorviItem";
    static constexpr std::string_view subscriptionID = "quorvi.private.changes";
    static constexpr std::string_view enabledKey = "iCloudSyncEnabled";
    // Set from the first launch until the archive has taken in what that launch began with.
    static constexpr std::string_view seedingKey = "iCloudSyncSeeding";

    // All of it outlives this.
    struct Environment {
        AppModel& model;
        HistoryStore& history;
        CorrectionStore& corrections;
        Preferences& preferences;
        Scheduler& scheduler;
        CloudDatabase& database;
        SyncArchive::Environment archive;
        // Keys of the settings that the user has chosen with this launch: they are edits even if it
        // is the first one.
        std::vector<std::string_view> chosen;
    };

    explicit AccountSync(Environment environment);
    ~AccountSync() override;

    Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }
    bool enabled() const override { return enabled_; }
    void setEnabled(bool enabled) override;
    const Message& status() const override { return status_; }
    std::size_t pendingCount() const override { return pendingCount_; }
    std::optional<Date> lastSynced() const override { return lastSynced_; }
    bool working() const override { return working_; }
    void syncNow() override;
    void shutdown() override;

    // None until it has been read.
    const SyncArchive* archive() const { return archive_.get(); }

private:
    // What is looked at within one turn of the main thread: a few milliseconds.
    static constexpr std::size_t valuesPerTurn = 1000;

    // Startup, local changes and the archive.
    Task<void> open(std::stop_token stop);
    void subscribe();
    bool storesAreReady() const;
    LocalSnapshot snapshot() const;
    // Takes in what has changed locally; much of it, or everything for the first time, is worked
    // out in the background.
    void capture();
    Task<void> captureInBackground(LocalSnapshot now, std::stop_token stop);
    Task<void> captureAll(std::stop_token stop);
    void captureChosen(const LocalChanges& changes);
    void adoptHeld(LocalChanges& changes);
    void noteSeeded();
    void noteDifferences();
    void noteCaptured(const std::vector<SharedString>& ids);
    void tick();
    void persist();
    void persisted(bool saved);
    void addPending(const SharedString& id);

    // Talking to the cloud.
    bool canRun() const { return enabled_ && diskHealthy_ && archive_ && !shutDown_; }
    Task<void> connect(std::stop_token stop);
    Task<void> tryToConnect(std::uint64_t attempt, std::stop_token stop);
    Task<void> fetchForTheFirstTime(std::shared_ptr<CloudSyncEngine> engine, std::stop_token stop);
    Task<void> pass(std::stop_token stop);
    Task<void> tryPass(std::stop_token stop);
    Task<void> exchange(std::shared_ptr<CloudSyncEngine> engine, std::stop_token stop);
    bool isCurrent(const std::shared_ptr<CloudSyncEngine>& engine) const {
        return canRun() && engine && engine == engine_;
    }
    void schedulePending();
    Task<void> scheduleInSlices(std::stop_token stop);
    void scheduleSome();
    void offerAllAgain();
    bool mayOfferRecords() const;
    void stop();
    void recordFailure(const std::exception& error);

    // What the engine tells and asks.
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
    void merge(const CloudRecord& record);
    std::optional<CloudRecordBatch> nextRecordZoneChangeBatch(
        std::span<const CloudRecordID> pending, CloudSyncEngine& engine) override;
    std::optional<CloudRecord> recordToSend(const CloudRecordID& id) const;

    // Writing into the stores.
    bool mayApply() const;
    void applyIfReady();
    Task<void> applyAll(std::stop_token stop);
    Task<void> tryToApply(std::stop_token stop);
    void commit(const StoreUpdate& application);
    LocalChanges notTakenOver(const StoreUpdate& application, const LocalSnapshot& now) const;

    void inNextTurn(std::function<void()> work);
    void setStatus(Message status);
    void changed() { changes_.notify(); }

    Environment environment_;
    Observable changes_;
    bool enabled_ = true;
    Message status_ = say::syncConnecting();
    std::size_t pendingCount_ = 0;
    std::optional<Date> lastSynced_;
    std::optional<Date> keptLastSynced_;  // the one that a pass of this run has last persisted
    bool working_ = false;

    std::unique_ptr<SyncArchive> archive_;
    bool diskHealthy_ = true;
    bool shutDown_ = false;

    // What the ledger has last taken in; nothing until everything has been looked at once.
    std::optional<LocalSnapshot> captured_;
    bool seeds_ = false;  // the first values of a first launch, which anything else overrides
    Activity capturing_{environment_.scheduler};  // in the background

    std::shared_ptr<CloudSyncEngine> engine_;
    bool connecting_ = false;
    std::uint64_t connection_ = 0;  // grows with every stop
    // Pending ids that the engine has not been told of yet.
    std::vector<SharedString> unscheduled_;
    bool needsFetchCompletion_ = true;
    std::optional<CloudError> fetchFailure_;
    TimePoint retryAfter_ = TimePoint::min();
    bool passAgain_ = false;  // something happened during a pass that it may have missed

    bool applying_ = false;                       // the stores are being written
    bool needsApply_ = false;                     // the ledger holds what the stores may not
    bool rulesMerged_ = false;                    // the rules' order may differ
    Activity preparing_{environment_.scheduler};  // an application is being worked out
    // Grows with whatever makes a prepared application out of date.
    std::uint64_t generation_ = 0;

    unsigned ticks_ = 0;
    Timer tickTimer_;
    Timer localSync_;  // the pass that follows a local change
    Timer preferencesSettle_;
    bool captureIsPosted_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  // for what is posted here
    std::vector<Subscription> subscriptions_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
