#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/folder/FolderLog.h"
#include "QuorviCore/base/ColdMemory.h"
#include "QuorviCore/base/SharedStringMap.h"

namespace quorvi {

// Location of the body of an entry.
struct FolderPlace {
    std::uint32_t machine = 0;  // number in the index
    std::uint32_t segment = 0;
    std::uint64_t offset = 0;
    std::uint32_t length = 0;
};

// The merged view of the logs of all machines: which zones exist, and which versions of their
// records are current. Independent of the order in which the logs are read. Holds no payloads. One
// thread at a time.
class FolderIndex {
public:
    using Entry = folderlog::Entry;
    static constexpr std::uint32_t nobody = UINT32_MAX;
    // What one machine's log may do to the others is limited: entries beyond it are ignored.
    static constexpr std::uint32_t zonesPerMachine = 100;   // that exist at a time
    static constexpr std::uint32_t namesPerMachine = 1000;  // of zones, ever
    static constexpr std::uint32_t generationsAhead = 1000;
    static constexpr std::uint64_t lastClock = std::uint64_t{1} << 62;

    // An entry that is or was current.
    struct Item {
        enum class State : std::uint8_t {
            current,   // not replaced; concurrent saves leave several
            replaced,  // by a version of another machine
            outdated,  // by a version of its own machine, or no longer in its log
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
    // The last version by one machine.
    struct Latest {
        std::uint32_t machine;
        std::uint32_t item;
    };
    // Of one name: the last version by each machine. Nearly always there is only one.
    struct Record {
        Latest first;
        std::unique_ptr<std::vector<Latest>> others = nullptr;

        // Calls visit(Latest&) for each until it returns true. Returns whether it did.
        template <class Visit>
        bool any(Visit visit) {
            return visit(first) || (others && std::ranges::any_of(*others, visit));
        }
        template <class Visit>
        bool any(Visit visit) const {
            return visit(first) || (others && std::ranges::any_of(std::as_const(*others), visit));
        }
    };
    struct Machine {
        Uuid id;
        std::uint64_t covered = 0;  // all entries up to this number are known
        std::uint32_t zones = 0;    // that exist and were made here
        std::uint32_t names = 0;    // of zones that were first named here
        std::uint64_t losses = 0;   // how often an entry of it has ceased to be needed
        std::vector<Item> items;    // in ascending order of number
    };
    struct Zone {
        std::string name;
        std::uint32_t maker = nobody;  // who made the present one
        std::uint32_t generation = 0;
        std::uint32_t deletedThrough = 0;
        SharedStringMap<Record> records;
        std::map<std::uint32_t, std::uint64_t> changed;  // last entry of each machine
        std::map<std::uint32_t, std::uint64_t> deleted;

        bool exists() const { return generation > deletedThrough; }
    };

    std::uint32_t machineNumber(const Uuid& id);
    const Machine& machine(std::uint32_t number) const { return machines_[number]; }
    std::size_t machineCount() const { return machines_.size(); }

    // Adds the next entry of a machine's log, or updates a known one that has moved.
    void take(const Entry& entry, const FolderPlace& place);
    // Declares the segment complete for the entries from `start` to `end`: those that exist only in
    // earlier segments have been dropped by their machine.
    void takeWhole(std::uint32_t machine, std::uint32_t segment, std::uint64_t start,
                   std::uint64_t end);

    const std::set<std::string>& owners() const { return owners_; }
    // Returns the clock of the next entry.
    std::uint64_t nextClock() const { return clock_ < lastClock ? clock_ + 1 : lastClock; }
    const std::vector<Zone>& zones() const { return zones_; }
    // Returns nullptr if the zone does not exist or has been deleted.
    const Zone* zone(std::string_view name) const;
    // Returns the generation of the next zone of that name.
    std::uint32_t nextGeneration(std::string_view name) const;

    // The current version; of concurrent ones, the one that all machines choose.
    struct Winner {
        std::uint32_t machine;
        const Item* item;
    };
    std::optional<Winner> winner(const Zone& zone, std::string_view name) const;
    bool counts(const Item& item) const;
    // Whether the item must stay in its machine's log. A version that another machine's version
    // replaces need not: it may hold what the user has deleted there.
    bool isNeeded(const Item& item) const;

private:
    bool isCredible(std::uint32_t machine, const Entry& entry) const;
    std::uint32_t zoneNumber(std::string_view name, std::uint32_t machine);
    void link(Latest latest, Record& record);
    void startGeneration(Zone& zone, const Entry& entry, std::uint32_t machine);
    void lose(std::uint32_t machine, Item& item, Item::State state);
    void loseAll();

    std::vector<Machine> machines_;
    std::map<Uuid, std::uint32_t> machineNumbers_;
    std::vector<Zone> zones_;
    std::map<std::string, std::uint32_t, std::less<>> zoneNumbers_;
    std::set<std::string> owners_;
    ColdStrings names_;  // of records
    std::uint64_t clock_ = 0;
};

}  // namespace quorvi
