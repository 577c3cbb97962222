#include "Quorvi/platform/linux/folder/FolderCloud.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

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
    struct stat status {};
    const auto path = opened_->segments.pathOf(machine_->id);
    return ::stat(path.c_str(), &status) == 0 && status.st_dev == opened_->device &&
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
    if (std::filesystem::is_directory(own, error)) return;
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
    struct stat status {};
    if (::stat(own.c_str(), &status) != 0) failFolder("open", own);
    opened->device = status.st_dev;
    opened->inode = status.st_ino;
    opened->segments.readAll(std::nullopt);
    opened->self = opened->index.machineNumber(machine_->id);
    const auto& self = opened->index.machine(opened->self);
    // Unknown numbers: a copy of this computer has written with this identity, or the machine file
    // is from a backup. Continue with a new identity.
    if (self.covered > machine_->reserved) {
        machine_->renew();
        return open();
    }
    const auto segments = opened->segments.segmentsOf(opened->self);
    if (!segments.empty()) opened->firstSegment = segments.front();
    opened->writer = std::make_unique<FolderWriter>(
        own, machine_->id, segments.empty() ? 1 : segments.back() + 1, limits_.segmentSize);
    // Numbers of lost entries are not reused, because others may have seen them.
    opened->nextNumber = std::max(machine_->reserved, self.covered) + 1;
    opened->ownBytes = opened->segments.sizeOf(opened->self);
    std::uint64_t needed = 0;
    for (const auto& item : self.items)
        if (opened->index.isNeeded(item)) needed += item.length + folderlog::frameSize;
    opened->outdatedBytes = opened->ownBytes - std::min(opened->ownBytes, needed);
    const auto owners = opened->index.owners();
    const bool isNew = !self.covered || !owners.contains(machine_->owner);
    opened_ = std::move(opened);
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

void FolderCloud::takeWritten(std::string_view bytes, const FolderWriter::Position& position) {
    opened_->ownBytes += bytes.size();
    std::size_t at = 0;
    while (const auto body = folderlog::readFrame(bytes.substr(at))) {
        const auto offset = position.offset + at + folderlog::frameSize;
        const auto entry = folderlog::readBody(*body);
        opened_->index.take(*entry, {opened_->self, position.segment, offset,
                                     static_cast<std::uint32_t>(body->size())});
        at += folderlog::frameSize + body->size();
    }
}

void FolderCloud::note(Entry entry) {
    auto& index = opened_->index;
    entry.number = reserve(1);
    entry.clock = index.clock() + 1;
    std::string bytes;
    folderlog::appendEntry(bytes, entry);
    const auto start = index.machine(opened_->self).covered + 1;
    takeWritten(bytes, opened_->writer->append(bytes, start));
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
    for (const auto& item : opened_->index.machine(opened_->self).items)
        if (opened_->index.counts(item) && &opened_->index.zones()[item.zone] == known)
            opened_->outdatedBytes += item.length + folderlog::frameSize;
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
    Batch batch{.number = reserve(records.size()), .clock = index.clock() + 1};
    std::vector<CloudSaveResult> results;
    results.reserve(records.size());
    for (auto& record : records) {
        auto error = appendTo(batch, record);
        results.push_back({std::move(record), std::move(error)});
    }
    if (!batch.bytes.empty()) {
        const auto start = index.machine(opened_->self).covered + 1;
        takeWritten(batch.bytes, opened_->writer->append(batch.bytes, start));
        opened_->outdatedBytes += batch.outdated;
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
    if (!batch.names.insert(record.id.zone + '\0' + record.id.name).second)
        return CloudError(cloudErrorCode::invalidArguments, "The record comes twice.");
    if (winner && winner->machine == opened_->self)
        batch.outdated += winner->item->length + folderlog::frameSize;
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
        token.positions[index.machine(machine).id] = index.machine(machine).covered;
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

void FolderCloud::compact() {
    auto& opened = ready();
    const bool isOutdated =
        opened.ownBytes >= limits_.smallLog && opened.outdatedBytes * 2 >= opened.ownBytes;
    const auto segments = opened.writer->nextSegment() - opened.firstSegment;
    const bool isScattered =
        segments > limits_.segments + 4 * opened.ownBytes / limits_.segmentSize;
    if (!isOutdated && !isScattered) return;
    auto& index = opened.index;
    const auto items = index.machine(opened.self).items;
    const auto covered = index.machine(opened.self).covered;
    const auto first = opened.writer->nextSegment();
    FolderBodies bodies(opened.segments);
    opened.writer->finishSegment();
    opened.ownBytes = 0;
    opened.outdatedBytes = 0;

    std::uint64_t start = 1, last = 0;
    std::string piece;
    const auto finishPiece = [&](std::uint64_t end) {
        folderlog::appendEntry(piece, {.kind = Entry::Kind::end, .number = end});
        takeWritten(piece, opened.writer->append(piece, start));
        opened.writer->finishSegment();
        start = end + 1;
        piece.clear();
    };
    for (const auto& item : items) {
        if (!index.isNeeded(item)) continue;
        const auto body = bodies.read({opened.self, item.segment, item.offset, item.length});
        // The log is damaged; keep what is left of it.
        if (!body) fail(cloudErrorCode::networkFailure, isNotThere);
        if (piece.size() > limits_.segmentSize / 2) finishPiece(last);
        folderlog::appendEntry(piece, *folderlog::readBody(*body));
        last = item.number;
    }
    finishPiece(covered);
    opened.writer->removeBelow(first);
    opened.firstSegment = first;
}

}  // namespace quorvi
