#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/sync/SyncItem.h"

// The export of a user's dictations, rules and settings: JSON for people and other programs. Each
// value carries the stamp by which the ledger tells which of two versions counts.
// docs/user/export.md describes it.
namespace quorvi {

// Writes items that are not deleted, in their order, piece by piece, so that the document need not
// be in memory as a whole. A value that the format cannot express is left out. Not thread-safe.
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

// Reads an export strictly: any error or missing required key rejects the whole document. Ignores
// unknown keys; the caller ignores unknown settings. Calls `progress` from time to time with the
// number of values read and in total; its exceptions propagate. Throws QuorviError.
std::vector<SyncItem> decodeExport(
    std::string document, const std::function<void(std::size_t done, std::size_t of)>& progress);

}  // namespace quorvi
