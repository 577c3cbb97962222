#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "QuorviCore/async/Executor.h"

namespace quorvi {

class FolderCloud;
class FolderWatch;

// A folder that the user's machines share, through any file synchroniser or network mount, as their
// database. Each machine writes only files of its own there, so that a synchroniser never meets a
// conflict; what has not arrived yet, or not whole, is waited for.
//
// The account is the owner's identity that the folder holds: whoever can read it belongs to it.
// A save is checked against what has arrived on this machine. Two machines that save a record
// before they hear of each other both succeed; then both versions are fetched by all machines, and
// one of them, the same everywhere, is the one that a further save has to name.
//
// Errors: networkUnavailable for a folder or mount that is missing, permissionFailure for one that
// may not be written, quotaExceeded for a full disk.
class FolderCloudDatabase final : public CloudDatabase {
public:
    struct Place {
        std::filesystem::path folder;  // made (0700) when it is missing
        // Where this computer keeps who it is in the folder; outside of it.
        std::filesystem::path deviceFile;
    };

    // The executor should have no other work.
    FolderCloudDatabase(Scheduler& scheduler, Executor& executor, Place place);
    ~FolderCloudDatabase() override;

    Task<CloudAccountStatus> accountStatus(std::stop_token stop) override;
    Task<std::string> userRecordName(std::stop_token stop) override;
    Task<void> saveZone(std::string zone, std::stop_token stop) override;
    Task<void> deleteZone(std::string zone, std::stop_token stop) override;
    Task<std::vector<CloudSaveResult>> saveRecords(std::vector<CloudRecord> records,
                                                   std::stop_token stop) override;
    Task<CloudRecord> fetchRecord(CloudRecordID id, std::stop_token stop) override;
    Task<CloudZoneChanges> zoneChanges(std::string token, std::stop_token stop) override;
    Task<CloudRecordChanges> recordChanges(std::string zone, std::string token,
                                           std::stop_token stop) override;
    Task<void> saveSubscription(std::string id, std::stop_token stop) override;
    Subscription onRemoteChange(std::function<void()> observer) override;
    Subscription onAccountChange(std::function<void()> observer) override;

private:
    struct Saves;

    template <class Work>
    auto run(Work work, std::stop_token stop);

    Scheduler& scheduler_;
    Executor& executor_;
    const std::filesystem::path folder_;
    const std::shared_ptr<FolderCloud> cloud_;  // the executor's
    const std::shared_ptr<Saves> saves_;        // those that wait for the executor
    // Shared with what has been posted.
    const std::shared_ptr<Observable> remoteChange_ = std::make_shared<Observable>();
    const std::shared_ptr<Observable> accountChange_ = std::make_shared<Observable>();
    std::string owner_;  // as it was last told; empty: not yet
    std::unique_ptr<FolderWatch> watch_;
};

}  // namespace quorvi
