#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/linux/folder/FolderIndex.h"
#include "Quorvi/platform/linux/folder/FolderMachine.h"
#include "Quorvi/platform/linux/folder/FolderSegments.h"
#include "Quorvi/platform/linux/folder/FolderToken.h"
#include "Quorvi/platform/linux/folder/FolderWriter.h"

namespace quorvi {

// Implements the cloud database over a shared folder, on the executor of FolderCloudDatabase. Every
// call blocks, first reads what other machines have written, and throws CloudError. The folder has
// a subfolder for each machine, named by its UUID, with the segments that only this machine writes.
// One thread at a time.
class FolderCloud {
public:
    struct Limits {
        std::size_t recordsPerPage = 2000;
        std::size_t bytesPerPage = 2 << 20;
        // A synchroniser that sends whole files sends at most this much per change.
        std::uint64_t segmentSize = 8 << 20;
        std::uint32_t segments = 64;  // more are put together; each start creates one
    };

    // `isShared`: the folder may be missing for a time; otherwise it is made again.
    FolderCloud(std::filesystem::path folder, std::filesystem::path machineFile, Limits limits,
                bool isShared = true);

    // Returns the id of the owner of the folder.
    std::string owner();
    void saveZone(const std::string& zone);
    void deleteZone(const std::string& zone);
    std::vector<CloudSaveResult> saveRecords(std::vector<CloudRecord> records);
    // Like several saveRecords() with one fsync.
    struct Outcome {
        std::vector<CloudSaveResult> results;
        std::exception_ptr failure;
    };
    std::vector<Outcome> saveTogether(std::vector<std::vector<CloudRecord>> batches);
    CloudRecord fetchRecord(const CloudRecordID& id);
    CloudZoneChanges zoneChanges(const std::string& token);
    CloudRecordChanges recordChanges(const std::string& zone, const std::string& token);

    // Whether this machine's log, as far as it is known, has entries that are not needed any more:
    // earlier versions, which may be of deleted values.
    bool isOutdated() const;
    // Rewrites the segments of this machine that have such entries; all of them if there are many.
    void compact();

    // Removes the files of another machine, which is gone for good. What only its files have is
    // written into this machine's first.
    void remove(const Uuid& other);

    // Returns the subfolder that this machine writes.
    std::filesystem::path ownFolder();

private:
    // State that is valid while the folder is present.
    struct Opened {
        explicit Opened(const std::filesystem::path& folder) : segments(folder, index) {}
        FolderIndex index;
        FolderSegments segments;
        std::unique_ptr<FolderWriter> writer;
        std::uint32_t self = 0;
        std::uint64_t device = 0;  // of its own folder, to detect a replacement
        std::uint64_t inode = 0;
        std::uint64_t nextNumber = 0;
        std::map<std::uint32_t, FolderRange> own;  // this machine's segments
        std::uint64_t losses = 0;                  // of this machine at the last compaction
    };

    Opened& ready();
    bool isStillThere() const;
    void open();
    void prepareFolder();
    // Reserves numbers for `count` entries; they are never used again.
    std::uint64_t reserve(std::size_t count);
    // Writes one entry that is not a record.
    void note(folderlog::Entry entry);
    // Saves without fsync.
    std::vector<CloudSaveResult> write(std::vector<CloudRecord> records);
    // Records that are to be appended to the log together.
    struct Batch {
        std::string bytes;         // their entries
        std::uint64_t number = 0;  // of the next entry
        std::uint64_t clock = 0;
        std::unordered_set<std::string> names;  // with their zones
    };
    // Adds a record, which gets its new tag, or returns why it is refused.
    std::optional<CloudError> appendTo(Batch& batch, CloudRecord& record);
    // Appends entries with numbers from `start` up to the log and the index.
    void append(std::string_view bytes, std::uint64_t start);
    bool isScattered() const;
    std::vector<FolderRange> outdatedRanges() const;
    void rewrite(const FolderRange& range);
    void takeOver(std::uint32_t machine);
    bool hasCurrent(const FolderIndex::Zone& zone, std::string_view name) const;
    CloudRecord recordAt(const FolderIndex::Winner& winner);
    std::optional<CloudRecord> read(FolderBodies& bodies, std::uint32_t machine,
                                    const FolderIndex::Item& item);
    std::string tagOf(std::uint32_t machine, std::uint64_t clock, std::uint64_t number) const;
    FolderToken tokenFrom(const std::string& text) const;

    const std::filesystem::path folder_;
    const std::filesystem::path machineFile_;
    const Limits limits_;
    const bool isShared_;
    std::unique_ptr<FolderMachine> machine_;
    std::unique_ptr<Opened> opened_;
};

}  // namespace quorvi
