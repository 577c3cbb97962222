#pragma once

#include "Quorvi/platform/JournalFile.h"

namespace quorvi {

// Journals on a local disk; a lock on the file excludes other processes. Stateless; thread-safe.
class PosixJournalFiles final : public JournalFiles {
public:
    std::unique_ptr<JournalFile> open(const std::filesystem::path& file) override;
};

}  // namespace quorvi
