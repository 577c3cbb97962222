#include "QuorviCore/history/DictationRecords.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quorvi {

namespace {

constexpr Date never{std::numeric_limits<double>::infinity()};

enum class Edit { keep, drop, dropText };

}  // namespace

DictationRecords::Chunk::Chunk(std::vector<DictationRecord> content)
    : records(std::move(content)),
      earliest(never),
      latest{-never.secondsSinceReferenceDate},
      earliestWithText(never) {
    for (const auto& record : records) {
        earliest = std::min(earliest, record.date);
        latest = std::max(latest, record.date);
        if (record.text) earliestWithText = std::min(earliestWithText, record.date);
    }
}

DictationRecords::DictationRecords(Parts parts) {
    if (!parts.empty()) parts_ = std::make_shared<const Parts>(std::move(parts));
}

DictationRecords::DictationRecords(std::vector<DictationRecord> records) {
    Builder builder;
    for (auto& record : records) builder.add(std::move(record));
    *this = builder.build();
}

std::size_t DictationRecords::size() const {
    return parts_ ? parts_->back().begin + parts_->back().chunk->records.size() : 0;
}

const std::vector<DictationRecords::Part>& DictationRecords::parts() const {
    static const Parts none;
    return parts_ ? *parts_ : none;
}

DictationRecords::const_iterator DictationRecords::begin() const {
    const auto& all = parts();
    return const_iterator(all.data(), all.data() + all.size());
}

DictationRecords::const_iterator DictationRecords::end() const {
    const auto& all = parts();
    return const_iterator(all.data() + all.size(), all.data() + all.size());
}

const DictationRecord& DictationRecords::operator[](std::size_t position) const {
    const auto part = std::prev(std::ranges::upper_bound(*parts_, position, {}, &Part::begin));
    return part->chunk->records[position - part->begin];
}

bool DictationRecords::operator==(const DictationRecords& other) const {
    if (parts_ == other.parts_) return true;
    if (size() != other.size()) return false;
    const auto& a = parts();
    const auto& b = other.parts();
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        if (a[i].chunk == b[i].chunk) continue;
        if (a[i].begin == b[i].begin && a[i].chunk->records == b[i].chunk->records) continue;
        return std::equal(begin(), end(), other.begin());
    }
    return true;
}

DictationRecords DictationRecords::prepending(DictationRecord record) const {
    const auto& old = parts();
    const bool extends = !old.empty() && old.front().chunk->records.size() < chunkSize;
    std::vector<DictationRecord> first;
    first.reserve(extends ? old.front().chunk->records.size() + 1 : 1);
    first.push_back(std::move(record));
    if (extends) {
        const auto& rest = old.front().chunk->records;
        first.insert(first.end(), rest.begin(), rest.end());
    }
    Parts parts;
    parts.reserve(old.size() + 1);
    auto chunk = std::make_shared<const Chunk>(std::move(first));
    const auto earliestWithText = chunk->earliestWithText;
    parts.push_back({std::move(chunk), 0, earliestWithText});
    for (std::size_t i = extends ? 1 : 0; i < old.size(); ++i) {
        parts.push_back(old[i]);
        ++parts.back().begin;
    }
    return DictationRecords(std::move(parts));
}

template <class MayChange, class EditOf>
DictationRecords DictationRecords::edited(MayChange mayChange, EditOf editOf) const {
    const auto& old = parts();
    const auto isKept = [&](const DictationRecord& record) { return editOf(record) == Edit::keep; };
    const auto changes = [&](const Part& part) {
        return mayChange(part) && !std::ranges::all_of(part.chunk->records, isKept);
    };
    if (std::ranges::none_of(old, changes)) return *this;

    Builder builder;
    for (const auto& part : old) {
        if (!changes(part)) {
            builder.add(part.chunk);
            continue;
        }
        std::vector<DictationRecord> rest;
        rest.reserve(part.chunk->records.size());
        for (const auto& record : part.chunk->records) {
            const auto edit = editOf(record);
            if (edit == Edit::drop) continue;
            rest.push_back(record);
            if (edit == Edit::dropText) rest.back().text.reset();
        }
        if (!rest.empty()) builder.add(std::make_shared<const Chunk>(std::move(rest)));
    }
    return builder.build();
}

DictationRecords DictationRecords::without(const Uuid& id) const {
    return edited(
        [](const Part&) { return true; },
        [&](const DictationRecord& record) { return record.id == id ? Edit::drop : Edit::keep; });
}

DictationRecords DictationRecords::withoutTextBefore(Date cutoff) const {
    return edited([&](const Part& part) { return part.earliestWithText < cutoff; },
                  [&](const DictationRecord& record) {
                      return record.text && record.date < cutoff ? Edit::dropText : Edit::keep;
                  });
}

DictationRecords DictationRecords::between(Date from, Date to) const {
    return edited(
        [&](const Part& part) { return part.chunk->earliest < from || part.chunk->latest > to; },
        [&](const DictationRecord& record) {
            return record.date < from || record.date > to ? Edit::drop : Edit::keep;
        });
}

DictationRecords DictationRecords::newestFirst() const {
    if (std::is_sorted(begin(), end(),
                       [](const auto& a, const auto& b) { return a.date > b.date; }))
        return *this;
    std::vector<const DictationRecord*> order;
    order.reserve(size());
    for (const auto& record : *this) order.push_back(&record);
    std::ranges::stable_sort(order, [](auto* a, auto* b) { return a->date > b->date; });
    Builder builder;
    for (const auto* record : order) builder.add(*record);
    return builder.build();
}

void DictationRecords::Builder::add(DictationRecord record) {
    if (open_.empty()) open_.reserve(chunkSize);
    open_.push_back(std::move(record));
    if (open_.size() == chunkSize) closeChunk();
}

void DictationRecords::Builder::add(ChunkPointer chunk) {
    closeChunk();
    const auto begin = size_;
    size_ += chunk->records.size();
    const auto earliestWithText = chunk->earliestWithText;
    parts_.push_back({std::move(chunk), begin, earliestWithText});
}

void DictationRecords::Builder::closeChunk() {
    if (open_.empty()) return;
    auto chunk = std::make_shared<const Chunk>(std::exchange(open_, {}));
    add(std::move(chunk));
}

DictationRecords DictationRecords::Builder::build() {
    closeChunk();
    size_ = 0;
    return DictationRecords(std::exchange(parts_, {}));
}

}  // namespace quorvi
