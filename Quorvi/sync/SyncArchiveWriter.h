#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/FileStore.h"
#include "Quorvi/platform/JournalFile.h"
#include "QuorviCore/sync/SyncDelta.h"
#include "QuorviCore/sync/SyncState.h"

namespace quorvi {

// The files of SyncArchive, document and journal, with a copy of the state that is written into
// them. Thread-safe. Every function but push() blocks, also while another one runs.
class SyncArchiveWriter {
public:
    // Reads both files. Throws std::system_error, or SyncFormatError if they can't be parsed.
    // `flushStores` as in SyncArchive::Environment.
    SyncArchiveWriter(FileStore& files, JournalFiles& journals, std::filesystem::path document,
                      std::size_t wholeUpTo, std::function<bool()> flushStores = {});

    // Queues changes for the copy, which the next call of another function applies.
    void push(std::vector<SyncDelta> deltas);

    // Writes the queued changes, if they are not on the disk already. Returns false on failure.
    bool write();
    // Whether the journal has grown so much that the document should be rewritten, when the program
    // is idle or at once.
    enum class Need { none, whenIdle, now };
    Need needsDocument() const;
    // Rewrites the document, unless the journal is empty. A waiting write() interrupts it unless
    // `regardless`. Returns false, with the files as they were, if it was interrupted or failed.
    bool writeDocument(bool regardless);

    void look(const std::function<void(const SyncState&)>& work);
    SyncState copy();

    // Writes the queued changes and closes the files: nothing is written after that.
    void close();

private:
    // Identifies one content of the document.
    struct Generation {
        std::uint64_t size = 0;
        std::uint32_t sum = 0;
        bool operator==(const Generation&) const = default;
    };

    void replay(std::string_view journal);
    bool writePushed();
    bool storesAreFlushed() const { return !flushStores_ || flushStores_(); }
    void takePushed();
    void appendToJournal();
    bool replaceDocument(bool regardless);
    bool hasDocument(const std::optional<Generation>& generation) const;
    static std::string header(Generation generation);

    FileStore& files_;
    const std::filesystem::path path_;
    const std::size_t wholeUpTo_;
    const std::function<bool()> flushStores_;

    std::mutex pushing_;  // guards pushed_ only
    std::vector<SyncDelta> pushed_;
    std::atomic<int> waiting_ = 0;  // writes that wait for their turn

    std::mutex working_;  // guards the rest
    SyncState state_;
    std::vector<SyncDelta> unwritten_;  // in the state, not on the disk
    std::optional<Generation> document_;
    std::unique_ptr<JournalFile> journal_;  // null if it can't be opened
    std::uint64_t journalSize_ = 0;         // of its valid part; 0: to be started anew
    bool journalNeedsCut_ = false;          // there are bytes after the valid part
    bool failed_ = false;                   // the content of the disk is uncertain
    bool closed_ = false;
    std::atomic<std::uint64_t> documentSize_ = 0, journalGrowth_ = 0;
};

}  // namespace quorvi
