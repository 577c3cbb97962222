#pragma once

#include <cstddef>
#include <list>
#include <set>
#include <unordered_set>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

// The records that wait to be sent, oldest change first, each once. Every method but all() and
// oldest() costs the same at any size.
class PendingSaves {
public:
    // Returns whether it is new.
    bool add(CloudRecordID id);
    bool contains(const CloudRecordID& id) const { return index_.contains(id); }
    std::size_t size() const { return index_.size(); }
    // Those under way first.
    std::vector<CloudRecordID> all(std::size_t limit) const;
    // The first that are neither under way nor held back.
    std::vector<CloudRecordID> oldest(std::size_t limit) const;

    // From waiting to under way; false when it does not wait.
    bool begin(const CloudRecordID& id);
    // Under way no more, and to be sent again before all others.
    void giveBack(const CloudRecordID& id);
    void remove(const CloudRecordID& id);
    // Removes it; added again, it is held back until releaseRefused().
    void refuse(const CloudRecordID& id);
    void releaseRefused();

private:
    enum class Place { waiting, underWay, heldBack };
    struct Entry {
        CloudRecordID id;
        Place place;
    };
    using List = std::list<Entry>;

    // Entries by their ids, which are kept once, in the lists.
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const CloudRecordID& id) const;
        std::size_t operator()(const List::iterator& entry) const { return (*this)(entry->id); }
    };
    struct Equal {
        using is_transparent = void;
        static const CloudRecordID& idOf(const CloudRecordID& id) { return id; }
        static const CloudRecordID& idOf(const List::iterator& entry) { return entry->id; }
        bool operator()(const auto& a, const auto& b) const { return idOf(a) == idOf(b); }
    };

    List& listOf(Place place);
    void move(List::iterator entry, Place to, bool toFront);

    List waiting_;
    List underWay_;
    List heldBack_;
    std::unordered_set<List::iterator, Hash, Equal> index_;
    std::set<CloudRecordID> refused_;
};

}  // namespace quorvi
