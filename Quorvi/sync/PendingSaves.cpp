#include "Quorvi/sync/PendingSaves.h"

#include <cstddef>
#include <functional>
#include <iterator>
#include <string_view>
#include <utility>

namespace quorvi {

std::size_t PendingSaves::Hash::operator()(const CloudRecordID& id) const {
    const std::hash<std::string_view> hash;
    return hash(id.name) ^ (hash(id.zone) << 1);
}

PendingSaves::List& PendingSaves::listOf(Place place) {
    switch (place) {
        case Place::underWay:
            return underWay_;
        case Place::heldBack:
            return heldBack_;
        case Place::waiting:
            break;
    }
    return waiting_;
}

void PendingSaves::move(List::iterator entry, Place to, bool toFront) {
    auto& target = listOf(to);
    target.splice(toFront ? target.begin() : target.end(), listOf(entry->place), entry);
    entry->place = to;
}

bool PendingSaves::add(CloudRecordID id) {
    if (index_.contains(id)) return false;
    const auto place =
        !refused_.empty() && refused_.contains(id) ? Place::heldBack : Place::waiting;
    auto& list = listOf(place);
    list.push_back({std::move(id), place});
    index_.insert(std::prev(list.end()));
    return true;
}

std::vector<CloudRecordID> PendingSaves::all(std::size_t limit) const {
    std::vector<CloudRecordID> ids;
    for (const auto* list : {&underWay_, &waiting_, &heldBack_})
        for (const auto& entry : *list) {
            if (ids.size() == limit) return ids;
            ids.push_back(entry.id);
        }
    return ids;
}

std::vector<CloudRecordID> PendingSaves::oldest(std::size_t limit) const {
    std::vector<CloudRecordID> ids;
    for (auto entry = waiting_.begin(); entry != waiting_.end() && ids.size() < limit; ++entry)
        ids.push_back(entry->id);
    return ids;
}

bool PendingSaves::begin(const CloudRecordID& id) {
    const auto found = index_.find(id);
    if (found == index_.end() || (*found)->place != Place::waiting) return false;
    move(*found, Place::underWay, false);
    return true;
}

void PendingSaves::giveBack(const CloudRecordID& id) {
    const auto found = index_.find(id);
    if (found != index_.end() && (*found)->place == Place::underWay)
        move(*found, Place::waiting, true);
}

void PendingSaves::remove(const CloudRecordID& id) {
    const auto found = index_.find(id);
    if (found == index_.end()) return;
    const auto entry = *found;
    index_.erase(found);
    listOf(entry->place).erase(entry);
}

void PendingSaves::refuse(const CloudRecordID& id) {
    remove(id);
    refused_.insert(id);
}

void PendingSaves::releaseRefused() {
    refused_.clear();
    for (auto& entry : heldBack_) entry.place = Place::waiting;
    waiting_.splice(waiting_.end(), heldBack_);
}

}  // namespace quorvi
