#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Quorvi/platform/linux/folder/FolderLog.h"

namespace quorvi {

// Where an entry's body is.
struct FolderPlace {
    std::uint32_t machine = 0;  // as numbered by the index
    std::uint32_t segment = 0;
    std::uint64_t offset = 0;
    std::uint32_t length = 0;
};

// What the logs of all machines come to: which zones there are, and which versions of their records
// count. It is the same for the same entries, in whatever order the machines' logs have come. Holds
// no payloads. One thread at a time.
class FolderIndex {
public:
    using Entry = folderlog::Entry;
    static constexpr std::uint32_t nobody = UINT32_MAX;

    // An entry that counts, or once did.
    struct Item {
        enum class State : std::uint8_t {
            current,   // no version replaces it; several at once after saves at the same time
            replaced,  // by a version of another machine
            outdated,  // by a version of its own machine
        };
        std::uint64_t number = 0;
        std::uint64_t clock = 0;
        std::uint64_t parentNumber = 0;
        std::uint64_t offset = 0;
        std::uint32_t parentMachine = nobody;
        std::uint32_t zone = 0;
        std::uint32_t generation = 0;
        std::uint32_t segment = 0;
        std::uint32_t length = 0;
        State state = State::current;
        bool isRecord = false;
    };
    // The last version that each machine has written.
    struct Latest {
        std::uint32_t machine;
        std::uint32_t item;
    };
    struct Record {
        std::vector<Latest> latest;
    };
    struct Machine {
        Uuid id;
        std::uint64_t covered = 0;  // all entries up to this one are known
        std::vector<Item> items;    // by ascending number
    };
    struct Zone {
        std::string name;
        std::uint32_t generation = 0;
        std::uint32_t deletedThrough = 0;
        std::unordered_map<std::string, Record> records;
        std::map<std::uint32_t, std::uint64_t> changed;  // the last entry of each machine
        std::map<std::uint32_t, std::uint64_t> deleted;

        bool exists() const { return generation > deletedThrough; }
    };

    std::uint32_t machineNumber(const Uuid& id);
    const Machine& machine(std::uint32_t number) const { return machines_[number]; }
    std::size_t machineCount() const { return machines_.size(); }

    // Takes in the next entry of a machine's log, or a known one that has moved.
    void take(const Entry& entry, const FolderPlace& place);
    // The segment has all that is left of the entries from `start` to `end`: those of them that
    // are only in segments before it have been given up by their machine.
    void takeWhole(std::uint32_t machine, std::uint32_t segment, std::uint64_t start,
                   std::uint64_t end);

    const std::set<std::string>& owners() const { return owners_; }
    std::uint64_t clock() const { return clock_; }
    const std::vector<Zone>& zones() const { return zones_; }
    // Null when there is none, or no more.
    const Zone* zone(std::string_view name) const;
    // Which generation the next zone of that name is.
    std::uint32_t nextGeneration(std::string_view name) const;

    // The version that counts: of several the one that all machines choose.
    struct Winner {
        std::uint32_t machine;
        const Item* item;
    };
    std::optional<Winner> winner(const Zone& zone, const std::string& name) const;
    bool counts(const Item& item) const;
    // Whether it has to be kept: others may not have seen what replaces it.
    bool isNeeded(const Item& item) const;

private:
    std::uint32_t zoneNumber(std::string_view name);
    void link(std::uint32_t machine, std::uint32_t item, Record& record);
    void startGeneration(Zone& zone, std::uint32_t generation);

    std::vector<Machine> machines_;
    std::vector<Zone> zones_;
    std::map<std::string, std::uint32_t, std::less<>> zoneNumbers_;
    std::set<std::string> owners_;
    std::uint64_t clock_ = 0;
};

}  // namespace quorvi
