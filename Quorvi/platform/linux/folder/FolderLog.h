#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/identity/Uuid.h"

// How a machine's changes stand in its files of a shared folder. A file is a segment of the
// machine's log: a head, and entries one after another. Numbers have their lowest byte first.
//
//     head:   "QuorviCloudLog1\n", machine (16), start (8), checksum (4)
//     entry:  length of the body (4), checksum of the body (4), body
//
// Entries have ascending numbers within a segment and, segments taken by their start, within the
// log. A segment may be read once everything before its start is known; numbers that are left out
// mean nothing. So what is missing is noticed, and what is torn is told from what is whole.
namespace quorvi::folderlog {

inline constexpr std::size_t headSize = 44;
inline constexpr std::size_t frameSize = 8;  // before each body

// Names a version of a record for good: the machine that wrote it, and the entry.
struct Version {
    Uuid machine;
    std::uint64_t number = 0;

    auto operator<=>(const Version&) const = default;
};

struct Entry {
    enum class Kind : std::uint8_t {
        owner = 1,    // name: whom the folder belongs to
        zoneMade,     // zone, generation
        zoneDeleted,  // zone, generation: it and those before
        record,       // zone, generation, name, type, parent, payload
        end,          // nothing more comes in this segment: the number is the last it covers
    };
    Kind kind = Kind::end;
    std::uint64_t number = 0;  // in its machine's log, from 1
    std::uint64_t clock = 0;   // greater than that of all entries its machine had seen
    std::uint32_t generation = 0;
    std::string_view zone;
    std::string_view name;
    std::string_view type;
    std::optional<Version> parent;  // the version that a record replaces
    std::optional<std::string_view> payload;
};

void appendHead(std::string& bytes, const Uuid& machine, std::uint64_t start);
// The start of a segment of this machine; nothing for any other bytes.
std::optional<std::uint64_t> readHead(std::string_view bytes, const Uuid& machine);

void appendEntry(std::string& bytes, const Entry& entry);
// The body of the entry that the bytes begin with; nothing when it is not all there, or damaged,
// which a reader can't tell apart.
std::optional<std::string_view> readFrame(std::string_view bytes);
// The views are into the body. Nothing for a body of another program.
std::optional<Entry> readBody(std::string_view body);

}  // namespace quorvi::folderlog
