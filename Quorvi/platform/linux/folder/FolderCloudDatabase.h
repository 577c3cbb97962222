#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

class FolderCloud;
class FolderWatch;

// A cloud database in a folder that the machines of a user share through a file synchroniser or a
// network mount. Each machine writes only its own files there, so a synchroniser never finds a
// conflict; files that are missing or incomplete are awaited.
//
// The account is the owner id in the folder: whoever can read the folder belongs to it. A save is
// checked against what this machine has received. If two machines save a record before they receive
// each other's version, both saves succeed, all machines fetch both versions, and all choose the
// same one as the version that the next save must name.
//
// What is replaced or deleted leaves this machine's files half a minute after it is known here, and
// before the end of the database.
//
// Errors: networkUnavailable if the folder or mount is missing, permissionFailure if it cannot be
// written, quotaExceeded if the disk is full.
class FolderCloudDatabase final : public CloudDatabase {
public:
    struct Place {
        std::filesystem::path folder;  // created (0700) if missing
        // File with the identity of this computer in the folder; outside of it.
        std::filesystem::path deviceFile;
        bool isShared = true;  // may be a mount; a folder of this machine alone never is
    };

    // The executor should have no other work; it outlives the database, whose last work it does.
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

    // Removes the files of another computer; see FolderCloud::remove().
    Task<void> removeComputer(Uuid other, std::stop_token stop);

private:
    struct Saves;

    template <class Work>
    auto run(Work work, std::stop_token stop);
    void compactSoon();

    Scheduler& scheduler_;
    Executor& executor_;
    const std::filesystem::path folder_;
    std::shared_ptr<FolderCloud> cloud_;  // used on the executor only
    const std::shared_ptr<Saves> saves_;  // waiting for the executor
    // Shared with posted functions.
    const std::shared_ptr<Observable> remoteChange_ = std::make_shared<Observable>();
    const std::shared_ptr<Observable> accountChange_ = std::make_shared<Observable>();
    std::string owner_;  // last result of userRecordName(); empty before
    std::unique_ptr<FolderWatch> watch_;
    bool isToCompact_ = false;
    Timer compaction_;
    Lifetime lifetime_;
};

}  // namespace quorvi
