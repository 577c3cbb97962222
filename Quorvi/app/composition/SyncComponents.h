#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "Quorvi/platform/CloudAccess.h"
#include "Quorvi/platform/FileStore.h"
#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/sync/AccountSync.h"
#include "QuorviCore/async/Future.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

class AppModel;

// Synchronisation with its threads and the cloud that the preference "cloudDatabase" names. When
// that changes, the present AccountSync ends and another one continues from its archive with the
// new cloud; observers notice a change of the state only. What it is given outlives it. Main
// thread.
class SyncComponents final : public SyncControl, public CloudAccess {
public:
    SyncComponents(AppModel& model, HistoryStore& history, CorrectionStore& corrections,
                   Preferences& preferences, FileStore& files, Scheduler& scheduler,
                   std::vector<std::string_view> chosen);
    ~SyncComponents() override;

    // Lets it read its files, which wait until then so as not to compete with start-up.
    void begin() { untilBegin_.release(); }

    Subscription onChange(std::function<void()> observer) override;
    bool enabled() const override { return sync_->enabled(); }
    void setEnabled(bool enabled) override { sync_->setEnabled(enabled); }
    const Message& status() const override { return sync_->status(); }
    std::size_t pendingCount() const override { return sync_->pendingCount(); }
    std::optional<Date> lastSynced() const override { return sync_->lastSynced(); }
    bool working() const override { return sync_->working(); }
    void syncNow() override { sync_->syncNow(); }
    void shutdown() override;

    std::optional<Message> problem(const std::string& address) const override;
    Task<bool> storePassword(std::string address, Secret password, std::stop_token stop) override;
    Task<std::optional<Message>> check(std::stop_token stop) override;
    Task<std::vector<CloudComputer>> computers(std::stop_token stop) override;
    Task<void> nameThisComputer(std::string name, std::stop_token stop) override;
    Task<std::optional<Message>> removeComputer(std::string id, std::stop_token stop) override;

private:
    class Use;

    std::unique_ptr<CloudDatabase> openCloud();
    void startSync(std::vector<std::string_view> chosen);
    void followSoon();
    void follow();
    bool isSharedFolder() const;
    Task<void> tryOut(Promise<std::optional<Message>> outcome, std::stop_token stop);

    const SyncedStores stores_;
    FileStore& files_;
    Scheduler& scheduler_;
    const std::filesystem::path userData_;
    PosixJournalFiles journals_;
    SerialExecutor cloudExecutor_{"cloud", SerialExecutor::Afterwards::giveMemoryBack};
    SerialExecutor aside_{"cloud-aside"};  // what waits for the keyring or for the end of a server
    SerialExecutor disk_{"sync", SerialExecutor::Afterwards::giveMemoryBack};
    SerialExecutor::Hold untilBegin_{disk_};
    std::string address_;  // of the present cloud
    std::unique_ptr<CloudDatabase> database_;
    std::unique_ptr<AccountSync> sync_;
    int uses_ = 0;  // tasks that use the database
    bool isShutDown_ = false;
    Observable changes_;
    Subscription syncChanges_;
    Subscription addressChanges_;
    Lifetime lifetime_;
    std::optional<TaskScope> checks_;  // of the present cloud; last: they end before what they use
};

}  // namespace quorvi
