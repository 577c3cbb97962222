#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/SyncControl.h"
#include "Quorvi/sync/CloudSession.h"
#include "Quorvi/sync/GuardedArchive.h"
#include "Quorvi/sync/ItemExchange.h"
#include "Quorvi/sync/LocalCapture.h"
#include "Quorvi/sync/StoreUpdater.h"
#include "Quorvi/sync/SyncedStores.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

// Keeps the history, the correction rules and the synchronised settings the same on all machines
// of one account. Recordings and keys never pass through it. A façade: LocalCapture records local
// changes, CloudSession and ItemExchange exchange them with the cloud, StoreUpdater writes changes
// of other machines into the stores.
//
// Main thread, in turns of a few milliseconds: the archive is read and written, and large changes
// are compared, on the executor. Call shutdown() or retire() before destruction.
class AccountSync final : public SyncControl {
public:
    // Everything in it outlives AccountSync.
    struct Environment {
        SyncedStores stores;
        Scheduler& scheduler;
        CloudDatabase* database;  // null if the configured address is invalid; the status says so
        // Of the database; empty for the one of this machine alone. Another address than in the
        // last launch is a new beginning with the same data.
        std::string address;
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
    bool enabled() const override { return session_.isEnabled(); }
    void setEnabled(bool enabled) override;
    const Message& status() const override { return status_; }
    std::size_t pendingCount() const override { return pendingCount_; }
    std::optional<Date> lastSynced() const override;
    bool working() const override { return session_.isWorking(); }
    void syncNow() override { session_.passNow(); }
    void shutdown() override;

    // Ends it like shutdown(), but without waiting for the disk. Destroy it in the same turn; the
    // next AccountSync with the same archive and executor continues where it ended.
    void retire();
    // Whether it still reads the archive: too early for retire().
    bool isOpening() const { return archive_.isOpening(); }

    // Null until it has been read.
    const SyncArchive* archive() const { return archive_.get(); }

private:
    static SyncArchive::Environment archiveEnvironment(Environment& environment);
    CloudSession::Environment sessionEnvironment(CloudDatabase* database, std::string address);
    void connectParts();
    Task<void> open(std::stop_token stop);
    void send(const std::vector<SharedString>& ids);
    void tick();
    void noteSaved();
    void end();
    void setStatus(Message status);

    const SyncedStores stores_;
    Scheduler& scheduler_;
    Observable changes_;
    Message status_ = say::syncConnecting();
    std::size_t pendingCount_ = 0;  // as last written to the disk
    bool isShutDown_ = false;
    unsigned ticks_ = 0;
    Timer tickTimer_;

    GuardedArchive archive_;
    LocalCapture capture_;
    StoreUpdater updater_;
    ItemExchange items_;
    CloudSession session_;
    TaskScope tasks_;  // last: the parts' tasks end before the parts
};

}  // namespace quorvi
