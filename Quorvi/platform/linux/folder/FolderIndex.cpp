#include "Quorvi/platform/linux/folder/FolderIndex.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace quorvi {

std::uint32_t FolderIndex::machineNumber(const Uuid& id) {
    const auto next = static_cast<std::uint32_t>(machines_.size());
    const auto [known, isNew] = machineNumbers_.try_emplace(id, next);
    if (isNew) machines_.emplace_back().id = id;
    return known->second;
}

std::uint32_t FolderIndex::zoneNumber(std::string_view name, std::uint32_t machine) {
    const auto found = zoneNumbers_.find(name);
    if (found != zoneNumbers_.end()) return found->second;
    const auto number = static_cast<std::uint32_t>(zones_.size());
    auto& zone = zones_.emplace_back();
    zone.name = name;
    ++machines_[machine].names;
    zoneNumbers_.emplace(name, number);
    return number;
}

bool FolderIndex::isCredible(std::uint32_t machine, const Entry& entry) const {
    const auto found = zoneNumbers_.find(entry.zone);
    const auto* known = found == zoneNumbers_.end() ? nullptr : &zones_[found->second];
    std::uint64_t last = generationsAhead;
    if (known) last += std::max(known->generation, known->deletedThrough);
    const auto& writer = machines_[machine];
    const bool isThere = known && known->exists();
    const bool isMade = entry.kind != Entry::Kind::zoneDeleted && !isThere;
    return entry.generation <= last && (known || writer.names < namesPerMachine) &&
           (!isMade || writer.zones < zonesPerMachine);
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

void FolderIndex::startGeneration(Zone& zone, const Entry& entry, std::uint32_t machine) {
    const bool existed = zone.exists();
    zone.generation = entry.generation;
    if (!existed && zone.exists()) {
        zone.maker = machine;
        ++machines_[machine].zones;
    }
    zone.records.clear();
    loseAll();
}

void FolderIndex::lose(std::uint32_t machine, Item& item, Item::State state) {
    item.state = state;
    ++machines_[machine].losses;
}

// After the end of a zone: any machine may have entries of it.
void FolderIndex::loseAll() {
    for (auto& machine : machines_) ++machine.losses;
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
    const auto clock = std::min(entry.clock, lastClock);
    clock_ = std::max(clock_, clock);

    Item item{.number = entry.number,
              .clock = clock,
              .offset = place.offset,
              .generation = entry.generation,
              .segment = place.segment,
              .length = place.length};
    if (entry.kind == Entry::Kind::owner) {
        owners_.emplace(entry.name);
        writer.items.push_back(item);
        return;
    }
    if (!isCredible(place.machine, entry)) return;
    item.zone = zoneNumber(entry.zone, place.machine);
    auto& zone = zones_[item.zone];
    switch (entry.kind) {
        case Entry::Kind::zoneMade:
            if (entry.generation > zone.generation) startGeneration(zone, entry, place.machine);
            zone.changed[place.machine] = entry.number;
            writer.items.push_back(item);
            break;
        case Entry::Kind::zoneDeleted:
            if (zone.exists() && entry.generation >= zone.generation) --machines_[zone.maker].zones;
            zone.deletedThrough = std::max(zone.deletedThrough, entry.generation);
            zone.deleted[place.machine] = entry.number;
            if (!zone.exists()) zone.records.clear();
            loseAll();
            writer.items.push_back(item);
            break;
        case Entry::Kind::record: {
            // The entry that made the zone may be in a log that has not arrived.
            if (entry.generation > zone.generation) startGeneration(zone, entry, place.machine);
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
                lose(place.machine, items.back(), Item::State::outdated);
                break;
            }
            zone.changed[place.machine] = entry.number;
            const auto known = zone.records.find(entry.name);
            if (known == zone.records.end())
                zone.records.emplace(names_.keep(entry.name), Record{{place.machine, at}});
            else
                link({place.machine, at}, known->second);
            break;
        }
        default:
            break;  // written by a later version of this program
    }
}

void FolderIndex::link(Latest latest, Record& record) {
    const auto machine = latest.machine;
    auto& item = machines_[machine].items[latest.item];
    record.any([&](const Latest& other) {
        auto& known = machines_[other.machine].items[other.item];
        if (other.machine == machine) {
            lose(machine, known, Item::State::outdated);
            return false;
        }
        if (item.parentMachine == other.machine && item.parentNumber == known.number)
            lose(other.machine, known, Item::State::replaced);
        if (known.parentMachine == machine && known.parentNumber == item.number)
            lose(machine, item, Item::State::replaced);
        return false;
    });
    const bool isKnown = record.any([&](Latest& other) {
        if (other.machine == machine) other = latest;
        return other.machine == machine;
    });
    if (isKnown) return;
    if (!record.others) record.others = std::make_unique<std::vector<Latest>>();
    record.others->push_back(latest);
}

void FolderIndex::takeWhole(std::uint32_t machine, std::uint32_t segment, std::uint64_t start,
                            std::uint64_t end) {
    auto& items = machines_[machine].items;
    auto item = std::ranges::lower_bound(items, start, {}, &Item::number);
    for (; item != items.end() && item->number <= end; ++item)
        if (item->segment < segment) item->state = Item::State::outdated;
}

bool FolderIndex::counts(const Item& item) const {
    return item.isRecord && item.state == Item::State::current &&
           item.generation == zones_[item.zone].generation && zones_[item.zone].exists();
}

bool FolderIndex::isNeeded(const Item& item) const {
    if (!item.isRecord) return true;
    return counts(item);
}

std::optional<FolderIndex::Winner> FolderIndex::winner(const Zone& zone,
                                                       std::string_view name) const {
    const auto found = zone.records.find(name);
    if (found == zone.records.end()) return std::nullopt;
    std::optional<Winner> best;
    const auto rank = [this](const Winner& one) {
        return std::tie(one.item->clock, machines_[one.machine].id);
    };
    found->second.any([&](const Latest& latest) {
        const Winner one{latest.machine, &machines_[latest.machine].items[latest.item]};
        if (one.item->state == Item::State::current && (!best || rank(*best) < rank(one)))
            best = one;
        return false;
    });
    return best;
}

}  // namespace quorvi
