#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/sync/SyncItem.h"

// The document in which a user takes their dictations, rules and settings along: JSON for people
// and other programs to read. Each value carries the stamp by which the ledger tells which of two
// versions counts. docs/user/export.md describes it.
namespace quorvi {

// Thrown for what is no such document; what() is a sentence for the user.
class ExportFormatError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Writes items that are not deleted, in their order, piece by piece, so that the document need not
// be in memory as a whole. A value that the document has no form for is left out. For one thread at
// a time.
class ExportEncoder {
public:
    explicit ExportEncoder(std::vector<SyncItem> items);

    // The next piece, valid until the next call; empty at the end.
    std::string_view next();

    // How many items of how many are written.
    std::size_t done() const { return position_; }
    std::size_t size() const { return items_.size(); }

private:
    enum class Part { history, corrections, settings, end };

    void append(const SyncItem& item);

    std::vector<SyncItem> items_;  // by part
    std::size_t position_ = 0;
    Part part_ = Part::history;
    bool isFirst_ = true;  // of its part
    std::string piece_;
};

// Reads it strictly: a fault anywhere, or something required that is missing, makes the whole
// unreadable. Unknown keys are ignored, and so are unknown settings later on. `progress` is told
// now and then how many values of how many are read; what it throws is passed on. Throws
// ExportFormatError.
std::vector<SyncItem> decodeExport(
    std::string document, const std::function<void(std::size_t done, std::size_t of)>& progress);

}  // namespace quorvi
