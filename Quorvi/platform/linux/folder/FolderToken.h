#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

// How far a reader of a shared folder has got: in each machine's log, and in which generation of a
// zone.
struct FolderToken {
    std::uint32_t generation = 0;
    std::map<Uuid, std::uint64_t> positions;

    std::string text() const;
    // Nothing for what text() has not made.
    static std::optional<FolderToken> parse(const std::string& text);
};

}  // namespace quorvi
