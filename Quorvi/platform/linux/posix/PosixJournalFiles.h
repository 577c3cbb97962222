#pragma once

#include "Quorvi/platform/JournalFile.h"

namespace quorvi {

// Journals on a local disk, kept from other processes by a lock on the file. Holds no state;
// thread-safe.
class PosixJournalFiles final : public JournalFiles {
public:
    std::unique_ptr<JournalFile> open(const std::filesystem::path& file) override;
};

}  // namespace quorvi
