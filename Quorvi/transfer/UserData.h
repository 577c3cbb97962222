#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <vector>

#include "Quorvi/corrections/CorrectionStore.h"
#include "Quorvi/history/HistoryFile.h"
#include "Quorvi/platform/FileStore.h"
#include "Quorvi/platform/JournalFile.h"
#include "Quorvi/platform/Preferences.h"
#include "Quorvi/sync/StoreUpdate.h"
#include "Quorvi/sync/SyncArchiveWriter.h"

namespace quorvi {

// The user's dictations, rules and settings as they lie in the files, each with the stamp that the
// synchronisation knows it by, for what works without a running program. Blocks for the disk.
class UserData {
public:
    struct Places {
        FileStore& files;
        JournalFiles& journals;
        Preferences& preferences;
        Scheduler& scheduler;
        std::filesystem::path history, archive;  // the files
    };
    enum class Access {
        reading,   // while the program may run; its latest writes may be missing
        changing,  // only while the program does not run
    };

    // Throws QuorviError when something can't be read, and never overwrites it.
    UserData(const Places& places, Access access);

    // Every value, newest version first.
    std::vector<SyncItem> items() const;

    struct Counts {
        std::size_t dictations = 0, rules = 0, settings = 0;
    };
    static Counts count(const std::vector<SyncItem>& items);

    // Folds in versions from elsewhere, in memory: the later version of each value counts, what was
    // deleted here stays deleted, and a dropped text stays dropped. Returns how many values
    // changed.
    Counts merge(const std::vector<SyncItem>& incoming);

    // Writes the merged data. Throws QuorviError. Replaces the history, then
    // the preferences; after a failure between the two, the same merge completes it.
    void save();

private:
    void openArchive(const Places& places, Access access);
    void saveArchive();

    Preferences& preferences_;
    HistoryFile history_;
    DictationRecords records_;
    CorrectionStore corrections_;
    std::unique_ptr<SyncArchiveWriter> writer_;  // when there is an archive to be written
    SyncState state_;
    std::vector<SharedString> changed_;  // ids with another version than the archive has
};

}  // namespace quorvi
