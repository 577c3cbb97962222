#pragma once

#include <memory>

#include "Quorvi/platform/FileStore.h"
#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/sync/AccountSync.h"

namespace quorvi {

class AppModel;

// Synchronisation with its threads and the cloud that the preference "cloudDatabase" names. What it
// is given outlives it.
class SyncComponents {
public:
    SyncComponents(AppModel& model, HistoryStore& history, CorrectionStore& corrections,
                   Preferences& preferences, FileStore& files, Scheduler& scheduler,
                   std::vector<std::string_view> chosen);

    AccountSync& accountSync() { return *sync_; }

    // Lets it read its files, which wait until then so as not to compete with start-up.
    void begin() { untilBegin_.release(); }

private:
    SerialExecutor cloudExecutor_{"cloud"};
    SerialExecutor disk_{"sync"};
    SerialExecutor::Hold untilBegin_{disk_};
    PosixJournalFiles journals_;
    std::unique_ptr<CloudDatabase> database_;
    std::unique_ptr<AccountSync> sync_;
};

}  // namespace quorvi
