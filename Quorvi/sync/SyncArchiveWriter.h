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

// The document of the synchronisation and the journal beside it, with a copy of the state that is
// written into them. Blocks; every function may be called on any thread, and waits for the others,
// but for push().
class SyncArchiveWriter {
public:
    // `flushStores` as in SyncArchive::Environment.
    // Reads both files. Throws std::system_error, or SyncFormatError when they are not understood.
    SyncArchiveWriter(FileStore& files, JournalFiles& journals, std::filesystem::path document,
                      std::size_t wholeUpTo, std::function<bool()> flushStores = {});

    // For the next one who works on the copy. Takes no time.
    void push(std::vector<SyncDelta> deltas);

    // Writes what was pushed; nothing when somebody else has written it. False when it is not kept.
    bool write();
    // Whether the journal has grown so much that the document is to be written: when there is
    // nothing else to do, or at once.
    enum class Need { none, whenIdle, now };
    Need needsDocument() const;
    // Writes the document, unless the journal is empty. What waits to be written interrupts it,
    // but for `regardless`; false then, and when it failed, which leaves everything as it was.
    bool writeDocument(bool regardless);

    void look(const std::function<void(const SyncState&)>& work);
    SyncState copy();

    // Writes what was pushed, and lets go of the files: nothing is written any more.
    void close();

private:
    // What tells one content of the document from another.
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
    std::atomic<int> waiting_ = 0;  // writes that have not begun

    std::mutex working_;  // guards the rest
    SyncState state_;
    std::vector<SyncDelta> unwritten_;  // in the state, and not yet on the disk
    std::optional<Generation> document_;
    std::unique_ptr<JournalFile> journal_;  // none where there can't be one
    std::uint64_t journalSize_ = 0;         // up to where it is valid; 0 when it is to be begun
    bool journalNeedsCut_ = false;          // there is something behind that
    bool failed_ = false;                   // what is on the disk is not what is thought
    bool closed_ = false;
    std::atomic<std::uint64_t> documentSize_ = 0, journalGrowth_ = 0;
};

}  // namespace quorvi
