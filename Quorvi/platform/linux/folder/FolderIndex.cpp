#include "Quorvi/platform/linux/folder/FolderIndex.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace quorvi {

std::uint32_t FolderIndex::machineNumber(const Uuid& id) {
    const auto found = std::find_if(machines_.begin(), machines_.end(),
                                    [&](const Machine& one) { return one.id == id; });
    if (found != machines_.end()) return static_cast<std::uint32_t>(found - machines_.begin());
    machines_.push_back({id, 0, {}});
    return static_cast<std::uint32_t>(machines_.size() - 1);
}

std::uint32_t FolderIndex::zoneNumber(std::string_view name) {
    const auto found = zoneNumbers_.find(name);
    if (found != zoneNumbers_.end()) return found->second;
    const auto number = static_cast<std::uint32_t>(zones_.size());
    zones_.emplace_back().name = name;
    zoneNumbers_.emplace(name, number);
    return number;
}

const FolderIndex::Zone* FolderIndex::zone(std::string_view name) const {
    const auto found = zoneNumbers_.find(name);
    if (found == zoneNumbers_.end() || !zones_[found->second].exists()) return nullptr;
    return &zones_[found->second];
}

std::uint32_t FolderIndex::nextGeneration(std::string_view name) const {
    const auto found = zoneNumbers_.find(name);
    if (found == zoneNumbers_.end()) return 1;
    const auto& known = zones_[found->second];
    return std::max(known.generation, known.deletedThrough) + 1;
}

void FolderIndex::startGeneration(Zone& zone, std::uint32_t generation) {
    zone.generation = generation;
    zone.records.clear();
}

void FolderIndex::take(const Entry& entry, const FolderPlace& place) {
    auto& writer = machines_[place.machine];
    if (entry.kind == Entry::Kind::end) {  // has no number of its own
        writer.covered = std::max(writer.covered, entry.number);
        return;
    }
    if (entry.number <= writer.covered) {
        const auto found = std::lower_bound(
            writer.items.begin(), writer.items.end(), entry.number,
            [](const Item& item, std::uint64_t number) { return item.number < number; });
        if (found == writer.items.end() || found->number != entry.number) return;
        if (found->segment > place.segment) return;
        found->segment = place.segment;
        found->offset = place.offset;
        found->length = place.length;
        return;
    }
    writer.covered = entry.number;
    clock_ = std::max(clock_, entry.clock);

    Item item{.number = entry.number,
              .clock = entry.clock,
              .offset = place.offset,
              .generation = entry.generation,
              .segment = place.segment,
              .length = place.length};
    if (entry.kind == Entry::Kind::owner) {
        owners_.emplace(entry.name);
        writer.items.push_back(item);
        return;
    }
    item.zone = zoneNumber(entry.zone);
    auto& zone = zones_[item.zone];
    switch (entry.kind) {
        case Entry::Kind::zoneMade:
            if (entry.generation > zone.generation) startGeneration(zone, entry.generation);
            zone.changed[place.machine] = entry.number;
            writer.items.push_back(item);
            break;
        case Entry::Kind::zoneDeleted:
            zone.deletedThrough = std::max(zone.deletedThrough, entry.generation);
            zone.deleted[place.machine] = entry.number;
            if (!zone.exists()) zone.records.clear();
            writer.items.push_back(item);
            break;
        case Entry::Kind::record: {
            // The entry that made the zone may be in a log that has not arrived.
            if (entry.generation > zone.generation) startGeneration(zone, entry.generation);
            item.isRecord = true;
            if (entry.parent) {
                item.parentMachine = machineNumber(entry.parent->machine);
                item.parentNumber = entry.parent->number;
            }
            auto& items =
                machines_[place.machine].items;  // machineNumber() may have invalidated `writer`
            const auto at = static_cast<std::uint32_t>(items.size());
            items.push_back(item);
            if (!zone.exists() || entry.generation != zone.generation) {
                items.back().state = Item::State::outdated;
                break;
            }
            zone.changed[place.machine] = entry.number;
            auto& record = zone.records[std::string(entry.name)];
            link(place.machine, at, record);
            break;
        }
        default:
            break;  // written by a later version of this program
    }
}

void FolderIndex::link(std::uint32_t machine, std::uint32_t at, Record& record) {
    auto& item = machines_[machine].items[at];
    for (auto& other : record.latest) {
        auto& known = machines_[other.machine].items[other.item];
        if (other.machine == machine) {
            known.state = Item::State::outdated;
            continue;
        }
        if (item.parentMachine == other.machine && item.parentNumber == known.number)
            known.state = Item::State::replaced;
        if (known.parentMachine == machine && known.parentNumber == item.number)
            item.state = Item::State::replaced;
    }
    for (auto& other : record.latest)
        if (other.machine == machine) {
            other.item = at;
            return;
        }
    record.latest.push_back({machine, at});
}

void FolderIndex::takeWhole(std::uint32_t machine, std::uint32_t segment, std::uint64_t start,
                            std::uint64_t end) {
    for (auto& item : machines_[machine].items)
        if (item.number >= start && item.number <= end && item.segment < segment)
            item.state = Item::State::outdated;
}

bool FolderIndex::counts(const Item& item) const {
    return item.isRecord && item.state == Item::State::current &&
           item.generation == zones_[item.zone].generation && zones_[item.zone].exists();
}

bool FolderIndex::isNeeded(const Item& item) const {
    if (!item.isRecord) return true;
    return item.state != Item::State::outdated && item.generation == zones_[item.zone].generation &&
           zones_[item.zone].exists();
}

std::optional<FolderIndex::Winner> FolderIndex::winner(const Zone& zone,
                                                       const std::string& name) const {
    const auto found = zone.records.find(name);
    if (found == zone.records.end()) return std::nullopt;
    std::optional<Winner> best;
    const auto rank = [this](const Winner& one) {
        return std::tie(one.item->clock, machines_[one.machine].id);
    };
    for (const auto& [machine, at] : found->second.latest) {
        const Winner one{machine, &machines_[machine].items[at]};
        if (one.item->state != Item::State::current) continue;
        if (!best || rank(*best) < rank(one)) best = one;
    }
    return best;
}

}  // namespace quorvi
