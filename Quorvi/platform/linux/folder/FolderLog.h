#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/identity/Uuid.h"

// The file format of a machine's log in a shared folder. Each file is a segment of the log: a head
// followed by entries. Integers are little-endian.
//
//     head:   "QuorviCloudLog1\n", machine (16), start (8), checksum (4)
//     entry:  length of the body (4), checksum of the body (4), body
//
// Entry numbers ascend within a segment and, with segments ordered by their start, within the log.
// Numbers may be skipped. A segment may be read once everything before its start is known, so a
// missing segment is noticed, and a torn entry is told from a whole one by its checksum.
namespace quorvi::folderlog {

inline constexpr std::size_t headSize = 44;
inline constexpr std::size_t frameSize = 8;  // before each body
// Nothing longer is written, or taken for an entry.
inline constexpr std::size_t largestBody = 32 << 20;

// Identifies a version of a record: the machine that wrote it, and the number of its entry.
struct Version {
    Uuid machine;
    std::uint64_t number = 0;

    auto operator<=>(const Version&) const = default;
};

struct Entry {
    enum class Kind : std::uint8_t {
        owner = 1,    // name: owner of the folder
        zoneMade,     // zone, generation
        zoneDeleted,  // zone, generation: this one and all earlier ones
        record,       // zone, generation, name, type, parent, payload
        end,          // end of a segment; number: the last one covered
    };
    Kind kind = Kind::end;
    std::uint64_t number = 0;  // in the log of its machine, from 1
    std::uint64_t clock = 0;   // greater than all clocks that its machine had seen
    std::uint32_t generation = 0;
    std::string_view zone;
    std::string_view name;
    std::string_view type;
    std::optional<Version> parent;  // version that the record replaces
    std::optional<std::string_view> payload;
};

void appendHead(std::string& bytes, const Uuid& machine, std::uint64_t start);
// Returns the start of a segment of this machine; nullopt for anything else.
std::optional<std::uint64_t> readHead(std::string_view bytes, const Uuid& machine);

void appendEntry(std::string& bytes, const Entry& entry);
// Returns the body of the entry at the start of the bytes; nullopt if it is incomplete or damaged,
// which cannot be told apart.
std::optional<std::string_view> readFrame(std::string_view bytes);
// Returns the number of bytes that the entry at the start of the bytes needs, as far as they tell;
// 0 if that is no entry.
std::size_t frameSizeOf(std::string_view bytes);
// Decodes a body; the views point into it. Returns nullopt for entries of an unknown format.
std::optional<Entry> readBody(std::string_view body);

}  // namespace quorvi::folderlog
