#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <vector>

#include "QuorviCore/history/DictationRecord.h"

namespace quorvi {

// An immutable list of records, newest first. Operations return a new list that shares unchanged
// parts, so copies are cheap, another thread can read a list while the next one is made, and lists
// compare quickly. Records are held in chunks of a few hundred; lists share equal chunks.
class DictationRecords {
public:
    // Consecutive records with cached bounds.
    struct Chunk {
        explicit Chunk(std::vector<DictationRecord> content);

        std::vector<DictationRecord> records;
        Date earliest, latest;
        Date earliestWithText;  // infinitely late if no record has a text
    };
    using ChunkPointer = std::shared_ptr<const Chunk>;
    static constexpr std::size_t chunkSize = 256;

    struct Part {
        ChunkPointer chunk;
        std::size_t begin;  // index of its first record in the list
        Date earliestWithText;
    };

    class const_iterator;
    class Builder;

    DictationRecords() = default;
    explicit DictationRecords(std::vector<DictationRecord> records);

    std::size_t size() const;
    bool empty() const { return size() == 0; }
    const DictationRecord& operator[](std::size_t position) const;
    const_iterator begin() const;
    const_iterator end() const;
    const std::vector<Part>& parts() const;

    // Whether both are copies of one list; cheaper than comparing.
    bool isSharedWith(const DictationRecords& other) const { return parts_ == other.parts_; }
    bool operator==(const DictationRecords& other) const;

    // Returns the list with a record added in front; the cost hardly depends on the size.
    DictationRecords prepending(DictationRecord record) const;
    DictationRecords without(const Uuid& id) const;
    // Returns the list without the texts of records before `cutoff`. Chunks without such texts cost
    // nothing.
    DictationRecords withoutTextBefore(Date cutoff) const;
    // Returns the records between two instants, both included.
    DictationRecords between(Date from, Date to) const;
    // Returns the records sorted by date; records of the same date keep their order.
    DictationRecords newestFirst() const;

private:
    using Parts = std::vector<Part>;
    explicit DictationRecords(Parts parts);
    template <class MayChange, class Edit>
    DictationRecords edited(MayChange mayChange, Edit edit) const;

    std::shared_ptr<const Parts> parts_;  // nullptr for the empty list
};

class DictationRecords::const_iterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = DictationRecord;
    using difference_type = std::ptrdiff_t;
    using pointer = const DictationRecord*;
    using reference = const DictationRecord&;

    const_iterator() = default;
    explicit const_iterator(const Part* part, const Part* last) : part_(part), last_(last) {
        enterPart();
    }
    reference operator*() const { return *at_; }
    pointer operator->() const { return at_; }
    const_iterator& operator++() {
        if (++at_ == end_) {
            ++part_;
            enterPart();
        }
        return *this;
    }
    const_iterator operator++(int) {
        auto before = *this;
        ++*this;
        return before;
    }
    bool operator==(const const_iterator& other) const { return at_ == other.at_; }

private:
    void enterPart() {
        at_ = part_ == last_ ? nullptr : part_->chunk->records.data();
        end_ = part_ == last_ ? nullptr : at_ + part_->chunk->records.size();
    }

    const Part* part_ = nullptr;
    const Part* last_ = nullptr;
    pointer at_ = nullptr;
    pointer end_ = nullptr;
};

// Builds a list record by record, in order.
class DictationRecords::Builder {
public:
    void add(DictationRecord record);
    void add(ChunkPointer chunk);
    DictationRecords build();

private:
    void closeChunk();

    std::vector<DictationRecord> open_;
    Parts parts_;
    std::size_t size_ = 0;
};

}  // namespace quorvi
