#pragma once

#include <filesystem>

#include "Quorvi/platform/FileStore.h"
#include "QuorviCore/history/DictationRecords.h"

namespace quorvi {

// The history document on disk. Operations block, so they run on an executor, one at a time. The
// FileStore outlives the object.
class HistoryFile {
public:
    HistoryFile(FileStore& store, std::filesystem::path path)
        : store_(store), path_(std::move(path)) {}

    // Returns the records, newest first; an empty list if there is no file. Throws
    // std::system_error if the file cannot be read, HistoryFormatError if it is malformed, and
    // QuorviError if a newer version of the program wrote it.
    DictationRecords load() const;

    // Replaces the document durably. Throws std::system_error, or HistoryFormatError for a record
    // that cannot be encoded; then the old document is unchanged.
    void save(const DictationRecords& records) const;

private:
    FileStore& store_;
    std::filesystem::path path_;
};

}  // namespace quorvi
