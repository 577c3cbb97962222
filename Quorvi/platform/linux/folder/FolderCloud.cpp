#include "Quorvi/platform/linux/folder/FolderCloud.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "Quorvi/platform/linux/folder/FolderComputers.h"
#include "Quorvi/platform/linux/folder/FolderError.h"
#include "Quorvi/platform/linux/posix/PrivateFolder.h"

namespace quorvi {

using folderlog::Entry;

namespace {

// Numbers reserved at a time; the machine file is written once for so many entries.
constexpr std::uint64_t reservation = 1 << 20;

constexpr auto isNotThere = "A file of the folder is not there.";

[[noreturn]] void fail(int code, const char* why) {
    throw CloudError(code, why);
}

// Converts errors of helpers that do not know CloudError.
template <class Work>
void translated(const std::filesystem::path& path, Work work) {
    try {
        work();
    } catch (const std::system_error& error) {
        throw folderError(error.code().value(), "open", path);
    }
}

}  // namespace

FolderCloud::FolderCloud(std::filesystem::path folder, std::filesystem::path machineFile,
                         Limits limits, bool isShared)
    : folder_(std::move(folder)),
      machineFile_(std::move(machineFile)),
      limits_(limits),
      isShared_(isShared) {}

// --- the folder ---

bool FolderCloud::isStillThere() const {
    struct stat status{};
    const auto path = opened_->segments.pathOf(machine_->id);
    return ::lstat(path.c_str(), &status) == 0 && status.st_dev == opened_->device &&
           status.st_ino == opened_->inode;
}

FolderCloud::Opened& FolderCloud::ready() {
    if (opened_ && isStillThere()) {
        opened_->segments.readAll(machine_->id);
        return *opened_;
    }
    opened_.reset();
    open();
    return *opened_;
}

// Creates a new folder. A folder that was written before and is now empty is a missing mount, not a
// new folder.
void FolderCloud::prepareFolder() {
    std::error_code error;
    const bool exists = std::filesystem::is_directory(folder_, error);
    const auto own = folder_ / machine_->id.string();
    if (std::filesystem::is_directory(std::filesystem::symlink_status(own, error))) return;
    if (isShared_ && machine_->folder == folder_.string()) {
        bool hasMachines = false;
        if (exists)
            for (const auto& one : std::filesystem::directory_iterator(folder_, error))
                hasMachines |= isUuid(one.path().filename().string());
        if (!hasMachines)
            throw CloudError(cloudErrorCode::networkUnavailable,
                             "The folder " + folder_.string() + " is not there.");
    }
    // Another folder, or the files of this machine have been deleted.
    machine_->renew();
    translated(folder_, [this] {
        makePrivateFolder(folder_);
        makePrivateFolder(folder_ / machine_->id.string());
    });
}

void FolderCloud::open() {
    translated(machineFile_, [this] {
        if (!machine_) machine_ = std::make_unique<FolderMachine>(machineFile_);
    });
    prepareFolder();
    auto opened = std::make_unique<Opened>(folder_);
    const auto own = opened->segments.pathOf(machine_->id);
    struct stat status{};
    if (::lstat(own.c_str(), &status) != 0) failFolder("open", own);
    opened->device = status.st_dev;
    opened->inode = status.st_ino;
    opened->segments.readAll(std::nullopt);
    opened->self = opened->index.machineNumber(machine_->id);
    const auto& self = opened->index.machine(opened->self);
    // Unknown numbers: a copy of this computer has written with this identity, or the machine file
    // is from a backup. Continue with a new identity.
    const auto lastSegment = opened->segments.lastOf(opened->self);
    if (self.covered > machine_->reserved || lastSegment >= largestSegmentNumber) {
        machine_->renew();
        return open();
    }
    opened->own = opened->segments.rangesOf(opened->self);
    opened->writer =
        std::make_unique<FolderWriter>(own, machine_->id, lastSegment + 1, limits_.segmentSize);
    // Numbers of lost entries are not reused, because others may have seen them.
    opened->nextNumber = std::max(machine_->reserved, self.covered) + 1;
    const auto owners = opened->index.owners();
    const bool isNew = !self.covered || !owners.contains(machine_->owner);
    opened_ = std::move(opened);
    nameFolderComputer(own, computerNameFile(machineFile_));
    try {
        if (isNew) {
            const auto owner = owners.contains(machine_->owner) ? machine_->owner
                               : owners.empty()                 ? newUuid()
                                                                : *owners.begin();
            note({.kind = Entry::Kind::owner, .name = owner});
            machine_->owner = owner;
        }
        if (isNew || machine_->folder != folder_.string()) {
            machine_->folder = folder_.string();
            translated(machineFile_, [this] { machine_->save(); });
        }
    } catch (const CloudError&) {
        opened_.reset();
        throw;
    }
}

std::filesystem::path FolderCloud::ownFolder() {
    ready();
    return folder_ / machine_->id.string();
}

std::string FolderCloud::owner() {
    ready();
    return machine_->owner;
}

// --- writing ---

std::uint64_t FolderCloud::reserve(std::size_t count) {
    const auto first = opened_->nextNumber;
    if (first + count > machine_->reserved) {
        const auto before = std::exchange(machine_->reserved, first + count + reservation);
        try {
            translated(machineFile_, [this] { machine_->save(); });
        } catch (const CloudError&) {
            machine_->reserved = before;
            throw;
        }
    }
    opened_->nextNumber += count;
    return first;
}

void FolderCloud::append(std::string_view bytes, std::uint64_t start) {
    const auto position = opened_->writer->append(bytes, start);
    auto& range =
        opened_->own.try_emplace(position.segment, FolderRange{start, start - 1}).first->second;
    range.bytes += bytes.size();
    std::size_t at = 0;
    while (const auto body = folderlog::readFrame(bytes.substr(at))) {
        const auto offset = position.offset + at + folderlog::frameSize;
        const auto entry = folderlog::readBody(*body);
        opened_->index.take(*entry, {opened_->self, position.segment, offset,
                                     static_cast<std::uint32_t>(body->size())});
        if (entry->kind == Entry::Kind::end)
            opened_->index.takeWhole(opened_->self, position.segment, range.start, entry->number);
        range.last = std::max(range.last, entry->number);
        at += folderlog::frameSize + body->size();
    }
}

void FolderCloud::note(Entry entry) {
    auto& index = opened_->index;
    entry.number = reserve(1);
    entry.clock = index.nextClock();
    std::string bytes;
    folderlog::appendEntry(bytes, entry);
    const auto start = index.machine(opened_->self).covered + 1;
    append(bytes, start);
    opened_->writer->sync();
}

void FolderCloud::saveZone(const std::string& zone) {
    auto& index = ready().index;
    if (index.zone(zone)) return;
    note({.kind = Entry::Kind::zoneMade, .generation = index.nextGeneration(zone), .zone = zone});
}

void FolderCloud::deleteZone(const std::string& zone) {
    const auto* known = ready().index.zone(zone);
    if (!known) return;
    note({.kind = Entry::Kind::zoneDeleted, .generation = known->generation, .zone = zone});
}

std::vector<CloudSaveResult> FolderCloud::saveRecords(std::vector<CloudRecord> records) {
    std::vector<std::vector<CloudRecord>> batches;
    batches.push_back(std::move(records));
    auto outcome = std::move(saveTogether(std::move(batches)).front());
    if (outcome.failure) std::rethrow_exception(outcome.failure);
    return std::move(outcome.results);
}

std::vector<FolderCloud::Outcome> FolderCloud::saveTogether(
    std::vector<std::vector<CloudRecord>> batches) {
    std::vector<Outcome> outcomes(batches.size());
    for (std::size_t i = 0; i < batches.size(); ++i) try {
            outcomes[i].results = write(std::move(batches[i]));
        } catch (const CloudError&) {
            outcomes[i].failure = std::current_exception();
        }
    try {
        if (opened_) opened_->writer->sync();
    } catch (const CloudError&) {
        opened_.reset();  // forces rereading the folder
        for (auto& outcome : outcomes) outcome = {{}, std::current_exception()};
    }
    return outcomes;
}

std::vector<CloudSaveResult> FolderCloud::write(std::vector<CloudRecord> records) {
    auto& index = ready().index;
    Batch batch{.number = reserve(records.size()), .clock = index.nextClock()};
    std::vector<CloudSaveResult> results;
    results.reserve(records.size());
    for (auto& record : records) {
        auto error = appendTo(batch, record);
        results.push_back({std::move(record), std::move(error)});
    }
    if (!batch.bytes.empty()) {
        const auto start = index.machine(opened_->self).covered + 1;
        append(batch.bytes, start);
    }
    return results;
}

std::optional<CloudError> FolderCloud::appendTo(Batch& batch, CloudRecord& record) {
    const auto& index = opened_->index;
    const auto* zone = index.zone(record.id.zone);
    if (!zone) return CloudError(cloudErrorCode::zoneNotFound, "There is no such zone.");
    Entry entry{.kind = Entry::Kind::record,
                .number = batch.number,
                .clock = batch.clock,
                .generation = zone->generation,
                .zone = record.id.zone,
                .name = record.id.name,
                .type = record.type};
    const auto winner = index.winner(*zone, record.id.name);
    if (!winner && !record.changeTag.empty())
        return CloudError(cloudErrorCode::unknownItem, "There is no such record.");
    if (winner) {
        const auto& item = *winner->item;
        if (record.changeTag != tagOf(winner->machine, item.clock, item.number)) {
            FolderBodies bodies(opened_->segments);
            auto stored = read(bodies, winner->machine, item);
            if (!stored) return CloudError(cloudErrorCode::networkFailure, isNotThere);
            return CloudError(cloudErrorCode::serverRecordChanged, "The record has changed.",
                              std::nullopt, std::move(stored));
        }
        entry.parent.emplace(folderlog::Version{index.machine(winner->machine).id, item.number});
    }
    const auto size = record.payload ? record.payload->size() : 0;
    if (size + record.id.zone.size() + record.id.name.size() + record.type.size() >
        folderlog::largestBody - 1000)
        return CloudError(cloudErrorCode::limitExceeded, "The record is too large.");
    if (!batch.names.insert(record.id.zone + '\0' + record.id.name).second)
        return CloudError(cloudErrorCode::invalidArguments, "The record comes twice.");
    if (record.payload) entry.payload = textOf(*record.payload);
    folderlog::appendEntry(batch.bytes, entry);
    record.changeTag = tagOf(opened_->self, batch.clock, batch.number);
    ++batch.number;
    return std::nullopt;
}

// --- reading ---

std::string FolderCloud::tagOf(std::uint32_t machine, std::uint64_t clock,
                               std::uint64_t number) const {
    const auto id = opened_->index.machine(machine).id.characters();
    std::string tag = std::to_string(clock);
    tag.append(1, '.').append(id.begin(), id.end()).append(1, '.');
    return tag.append(std::to_string(number));
}

std::optional<CloudRecord> FolderCloud::read(FolderBodies& bodies, std::uint32_t machine,
                                             const FolderIndex::Item& item) {
    const auto body = bodies.read({machine, item.segment, item.offset, item.length});
    const auto entry = body ? folderlog::readBody(*body) : std::nullopt;
    if (!entry || entry->number != item.number) return std::nullopt;
    CloudRecord record{.id = {std::string(entry->zone), std::string(entry->name)},
                       .type = std::string(entry->type),
                       .changeTag = tagOf(machine, item.clock, item.number)};
    if (entry->payload) record.payload = bytesOf(*entry->payload);
    return record;
}

CloudRecord FolderCloud::recordAt(const FolderIndex::Winner& winner) {
    FolderBodies bodies(opened_->segments);
    auto record = read(bodies, winner.machine, *winner.item);
    if (!record) fail(cloudErrorCode::networkFailure, isNotThere);
    return std::move(*record);
}

CloudRecord FolderCloud::fetchRecord(const CloudRecordID& id) {
    auto& index = ready().index;
    const auto* zone = index.zone(id.zone);
    if (!zone) fail(cloudErrorCode::zoneNotFound, "There is no such zone.");
    const auto winner = index.winner(*zone, id.name);
    if (!winner) fail(cloudErrorCode::unknownItem, "There is no such record.");
    return recordAt(*winner);
}

FolderToken FolderCloud::tokenFrom(const std::string& text) const {
    if (text.empty()) return {};
    auto token = FolderToken::parse(text);
    if (!token) fail(cloudErrorCode::changeTokenExpired, "The token is not understood.");
    return std::move(*token);
}

CloudZoneChanges FolderCloud::zoneChanges(const std::string& text) {
    auto& index = ready().index;
    auto token = tokenFrom(text);
    const auto hasNews = [&](const std::map<std::uint32_t, std::uint64_t>& last) {
        return std::any_of(last.begin(), last.end(), [&](const auto& one) {
            return one.second > token.positions[index.machine(one.first).id];
        });
    };
    CloudZoneChanges changes;
    for (const auto& zone : index.zones()) {
        if (zone.exists() && hasNews(zone.changed)) changes.modified.push_back(zone.name);
        if (!zone.exists() && !text.empty() && hasNews(zone.deleted))
            changes.deleted.push_back(zone.name);
    }
    for (std::uint32_t machine = 0; machine < index.machineCount(); ++machine)
        if (const auto covered = index.machine(machine).covered)
            token.positions[index.machine(machine).id] = covered;
    changes.token = token.text();
    return changes;
}

CloudRecordChanges FolderCloud::recordChanges(const std::string& name, const std::string& text) {
    auto& index = ready().index;
    const auto* zone = index.zone(name);
    if (!zone) fail(cloudErrorCode::zoneNotFound, "There is no such zone.");
    auto token = tokenFrom(text);
    if (!text.empty() && token.generation != zone->generation)
        fail(cloudErrorCode::changeTokenExpired, "The zone is another one.");
    token.generation = zone->generation;

    CloudRecordChanges page;
    std::size_t bytes = 0;
    FolderBodies bodies(opened_->segments);
    for (std::uint32_t number = 0; number < index.machineCount() && !page.more; ++number) {
        const auto& machine = index.machine(number);
        if (!machine.covered) continue;
        auto& position = token.positions[machine.id];
        auto item = std::upper_bound(
            machine.items.begin(), machine.items.end(), position,
            [](std::uint64_t value, const FolderIndex::Item& one) { return value < one.number; });
        bool isWhole = true;
        for (; item != machine.items.end(); ++item) {
            if (!index.counts(*item) || &index.zones()[item->zone] != zone) continue;
            if (page.modified.size() == limits_.recordsPerPage || bytes >= limits_.bytesPerPage) {
                page.more = true;
                break;
            }
            auto record = read(bodies, number, *item);
            // The file is gone; its replacement has not arrived yet.
            if (!record) {
                isWhole = false;
                break;
            }
            bytes += record->payload ? record->payload->size() : 0;
            page.modified.push_back(std::move(*record));
            position = item->number;
        }
        if (isWhole && !page.more) position = std::max(position, machine.covered);
    }
    page.token = token.text();
    return page;
}

// --- compacting ---

bool FolderCloud::isOutdated() const {
    return opened_ &&
           (opened_->index.machine(opened_->self).losses != opened_->losses || isScattered());
}

bool FolderCloud::isScattered() const {
    std::uint64_t bytes = 0;
    for (const auto& [segment, range] : opened_->own) bytes += range.bytes;
    return opened_->own.size() > limits_.segments + 4 * bytes / limits_.segmentSize;
}

// Returns the parts of this machine's log whose segments hold entries that are not needed.
std::vector<FolderRange> FolderCloud::outdatedRanges() const {
    const bool all = isScattered();
    std::set<std::uint32_t> outdated;
    for (const auto& item : opened_->index.machine(opened_->self).items)
        if (!opened_->index.isNeeded(item)) outdated.insert(item.segment);
    struct Part {
        FolderRange range;
        bool isOutdated;
    };
    std::vector<Part> parts;
    for (const auto& [segment, range] : opened_->own)
        parts.push_back({range, all || outdated.contains(segment)});
    std::ranges::sort(parts, {}, [](const Part& part) { return part.range.start; });
    // Segments overlap after a compaction that was interrupted.
    std::vector<Part> apart;
    for (const auto& part : parts) {
        const bool overlaps = !apart.empty() && (part.range.start <= apart.back().range.last ||
                                                 part.range.start == apart.back().range.start);
        if (!overlaps) {
            apart.push_back(part);
            continue;
        }
        auto& last = apart.back();
        last.range.last = std::max(last.range.last, part.range.last);
        last.isOutdated |= part.isOutdated;
    }
    std::vector<FolderRange> ranges;
    for (const auto& [range, isOutdated] : apart) {
        if (!isOutdated) continue;
        if (!ranges.empty() && ranges.back().last + 1 == range.start)
            ranges.back().last = range.last;
        else
            ranges.push_back(range);
    }
    return ranges;
}

void FolderCloud::compact() {
    auto& opened = ready();
    if (!isOutdated()) return;
    const auto losses = opened.index.machine(opened.self).losses;
    const auto ranges = outdatedRanges();
    opened.writer->finishSegment();
    const auto before = opened.own;
    for (const auto& range : ranges) rewrite(range);
    std::vector<std::uint32_t> gone;
    for (const auto& [segment, old] : before)
        if (std::ranges::any_of(ranges, [&own = old](const FolderRange& range) {
                return own.start >= range.start && own.start <= range.last + 1 &&
                       own.last <= range.last;
            }))
            gone.push_back(segment);
    if (!gone.empty()) opened.writer->remove(gone);
    for (const auto segment : gone) opened.own.erase(segment);
    opened.losses = losses;
}

// Writes the entries with these numbers that are needed into new segments, which say that they are
// all.
void FolderCloud::rewrite(const FolderRange& range) {
    const auto& index = opened_->index;
    FolderBodies bodies(opened_->segments);
    auto start = range.start;
    std::uint64_t last = 0;
    std::string piece;
    const auto finishPiece = [&](std::uint64_t end) {
        folderlog::appendEntry(piece, {.kind = Entry::Kind::end, .number = end});
        append(piece, start);
        opened_->writer->finishSegment();
        start = end + 1;
        piece.clear();
    };
    const auto& items = index.machine(opened_->self).items;
    auto item = std::ranges::lower_bound(items, range.start, {}, &FolderIndex::Item::number);
    for (; item != items.end() && item->number <= range.last; ++item) {
        if (!index.isNeeded(*item)) continue;
        const auto body = bodies.read({opened_->self, item->segment, item->offset, item->length});
        // The log is damaged; keep what is left of it.
        if (!body) fail(cloudErrorCode::networkFailure, isNotThere);
        if (piece.size() > limits_.segmentSize / 2) finishPiece(last);
        folderlog::appendEntry(piece, *folderlog::readBody(*body));
        last = item->number;
    }
    finishPiece(range.last);
}

// --- removing a machine ---

void FolderCloud::remove(const Uuid& other) {
    auto& opened = ready();
    if (other == machine_->id) fail(cloudErrorCode::invalidArguments, "This machine is in use.");
    std::vector<Entry> notes;
    for (const auto& zone : opened.index.zones()) {
        if (zone.deletedThrough)
            notes.push_back({.kind = Entry::Kind::zoneDeleted,
                             .generation = zone.deletedThrough,
                             .zone = zone.name});
        if (zone.exists())
            notes.push_back(
                {.kind = Entry::Kind::zoneMade, .generation = zone.generation, .zone = zone.name});
    }
    for (const auto& entry : notes) note(entry);
    takeOver(opened.index.machineNumber(other));
    std::error_code error;
    std::filesystem::remove_all(folder_ / other.string(), error);
    opened_.reset();
    if (error) throw folderError(error.value(), "remove", folder_ / other.string());
}

// Saves the current versions of another machine again, as versions of this one. Where this machine
// has a current version beside it, the two have been merged there.
void FolderCloud::takeOver(std::uint32_t machine) {
    auto& index = opened_->index;
    FolderBodies bodies(opened_->segments);
    std::string piece;
    const auto flush = [&] {
        if (!piece.empty()) append(piece, index.machine(opened_->self).covered + 1);
        piece.clear();
    };
    for (std::size_t i = 0; i < index.machine(machine).items.size(); ++i) {
        const auto item = index.machine(machine).items[i];
        if (!index.counts(item)) continue;
        const auto body = bodies.read({machine, item.segment, item.offset, item.length});
        auto entry = body ? folderlog::readBody(*body) : std::nullopt;
        if (!entry) fail(cloudErrorCode::networkFailure, isNotThere);
        if (hasCurrent(index.zones()[item.zone], entry->name)) continue;
        entry->parent.emplace(folderlog::Version{index.machine(machine).id, item.number});
        entry->number = reserve(1);
        entry->clock = index.nextClock();
        folderlog::appendEntry(piece, *entry);
        if (piece.size() > limits_.segmentSize / 4) flush();
    }
    flush();
    opened_->writer->sync();
}

bool FolderCloud::hasCurrent(const FolderIndex::Zone& zone, std::string_view name) const {
    const auto record = zone.records.find(name);
    if (record == zone.records.end()) return false;
    return record->second.any([&](const FolderIndex::Latest& latest) {
        return latest.machine == opened_->self &&
               opened_->index.counts(opened_->index.machine(latest.machine).items[latest.item]);
    });
}

}  // namespace quorvi
