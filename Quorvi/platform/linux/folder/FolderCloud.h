#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
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
        std::uint64_t smallLog = 4 << 20;  // a log up to this size is not compacted
        std::uint32_t segments = 64;       // more are compacted; each start creates one
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

    // Rewrites the segments of this machine if more than half of their content is outdated or there
    // are many of them.
    void compact();

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
        std::uint32_t firstSegment = 1;   // of this machine
        std::uint64_t ownBytes = 0;       // size of the entries in this machine's segments
        std::uint64_t outdatedBytes = 0;  // of those that are no longer needed
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
        std::uint64_t outdated = 0;             // bytes of entries that they replace
        std::unordered_set<std::string> names;  // with their zones
    };
    // Adds a record, which gets its new tag, or returns why it is refused.
    std::optional<CloudError> appendTo(Batch& batch, CloudRecord& record);
    void takeWritten(std::string_view bytes, const FolderWriter::Position& position);
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
