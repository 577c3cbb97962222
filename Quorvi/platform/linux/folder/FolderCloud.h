#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/linux/folder/FolderIndex.h"
#include "Quorvi/platform/linux/folder/FolderMachine.h"
#include "Quorvi/platform/linux/folder/FolderSegments.h"
#include "Quorvi/platform/linux/folder/FolderToken.h"
#include "Quorvi/platform/linux/folder/FolderWriter.h"

namespace quorvi {

// The cloud database that a shared folder amounts to, as FolderCloudDatabase's executor works it.
// Every call blocks, first takes in what other machines have written, and throws CloudError.
// The folder holds a folder for each machine, named by its UUID, and in it the segments that this
// machine alone writes. One thread at a time.
class FolderCloud {
public:
    struct Limits {
        std::size_t recordsPerPage = 2000;
        std::size_t bytesPerPage = 2 << 20;
        // A file synchroniser that sends whole files sends at most this for one change.
        std::uint64_t segmentSize = 8 << 20;
        std::uint64_t smallLog = 4 << 20;  // not worth rewriting
        std::uint32_t segments = 64;       // more than it takes; each start begins one
    };

    FolderCloud(std::filesystem::path folder, std::filesystem::path machineFile, Limits limits);
    FolderCloud(std::filesystem::path folder, std::filesystem::path machineFile)
        : FolderCloud(std::move(folder), std::move(machineFile), Limits()) {}

    // Whom the folder belongs to.
    std::string owner();
    void saveZone(const std::string& zone);
    void deleteZone(const std::string& zone);
    std::vector<CloudSaveResult> saveRecords(std::vector<CloudRecord> records);
    // Several such calls, which wait for the disk together.
    struct Outcome {
        std::vector<CloudSaveResult> results;
        std::exception_ptr failure;
    };
    std::vector<Outcome> saveTogether(std::vector<std::vector<CloudRecord>> batches);
    CloudRecord fetchRecord(const CloudRecordID& id);
    CloudZoneChanges zoneChanges(const std::string& token);
    CloudRecordChanges recordChanges(const std::string& zone, const std::string& token);

    // Rewrites this machine's segments when more than half of them is outdated, or there are many
    // small ones.
    void compact();

    // The folder that this machine writes.
    std::filesystem::path ownFolder();

private:
    // What is known of the folder while it is there.
    struct Opened {
        explicit Opened(const std::filesystem::path& folder) : segments(folder, index) {}
        FolderIndex index;
        FolderSegments segments;
        std::unique_ptr<FolderWriter> writer;
        std::uint32_t self = 0;
        std::uint64_t device = 0;  // of its own folder, to notice that it is another one
        std::uint64_t inode = 0;
        std::uint64_t nextNumber = 0;
        std::uint32_t firstSegment = 1;   // of this machine's
        std::uint64_t ownBytes = 0;       // entries in this machine's segments
        std::uint64_t outdatedBytes = 0;  // and those of them that are not needed any more
    };

    Opened& ready();
    bool isStillThere() const;
    void open();
    void prepareFolder();
    // Numbers for so many entries, never given out before.
    std::uint64_t reserve(std::size_t count);
    // Writes one entry that is no record.
    void note(folderlog::Entry entry);
    // Saves without waiting for the disk.
    std::vector<CloudSaveResult> write(std::vector<CloudRecord> records);
    void takeWritten(std::string_view bytes, const FolderWriter::Position& position);
    CloudRecord recordAt(const FolderIndex::Winner& winner);
    std::optional<CloudRecord> read(FolderBodies& bodies, std::uint32_t machine,
                                    const FolderIndex::Item& item);
    std::string tagOf(std::uint32_t machine, std::uint64_t clock, std::uint64_t number) const;
    FolderToken tokenFrom(const std::string& text) const;

    const std::filesystem::path folder_;
    const std::filesystem::path machineFile_;
    const Limits limits_;
    std::unique_ptr<FolderMachine> machine_;
    std::unique_ptr<Opened> opened_;
};

}  // namespace quorvi
