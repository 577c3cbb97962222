#pragma once

#include <memory>

#include "Quorvi/platform/FileStore.h"
#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/sync/AccountSync.h"

namespace quorvi {

// The synchronisation with its cloud, the one that the preference "cloudDatabase" names, and its
// threads. Reads nothing before begin(). Outlived by everything that it is given.
class SyncComponents {
public:
    SyncComponents(AppModel& model, HistoryStore& history, CorrectionStore& corrections,
                   Preferences& preferences, FileStore& files, Scheduler& scheduler,
                   std::vector<std::string_view> chosen);

    AccountSync& accountSync() { return *sync_; }

    // Has what lies on the disk read, which until then waits.
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
