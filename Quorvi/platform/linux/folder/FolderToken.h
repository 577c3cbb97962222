#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

// A position of a reader of a shared folder: the generation of a zone, and an entry number in the
// log of each machine.
struct FolderToken {
    std::uint32_t generation = 0;
    std::map<Uuid, std::uint64_t> positions;

    std::string text() const;
    // Returns nullopt for text that text() did not produce.
    static std::optional<FolderToken> parse(const std::string& text);
};

}  // namespace quorvi
