#pragma once

#include <filesystem>

#include "Quorvi/platform/FileStore.h"
#include "QuorviCore/history/DictationRecords.h"

namespace quorvi {

// The history document on the disk. Each operation blocks, so it runs on an executor; not two at a
// time. The FileStore outlives the object.
class HistoryFile {
public:
    HistoryFile(FileStore& store, std::filesystem::path path)
        : store_(store), path_(std::move(path)) {}

    // The records, newest first; none when there is no file. Throws std::system_error when it can't
    // be read, HistoryFormatError when it is no history, and QuorviError when a newer version of
    // the program has written it.
    DictationRecords load() const;

    // Replaces the document durably. Throws std::system_error, or HistoryFormatError for a record
    // that can't be written; the old document is then still there.
    void save(const DictationRecords& records) const;

private:
    FileStore& store_;
    std::filesystem::path path_;
};

}  // namespace quorvi
