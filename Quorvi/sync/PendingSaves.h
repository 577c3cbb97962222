#pragma once

#include <cstddef>
#include <list>
#include <set>
#include <unordered_set>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

// The records to be sent: an ordered set, oldest change first. Every method but all() and oldest()
// takes constant time. Main thread.
class PendingSaves {
public:
    // Returns false if it is in the set already.
    bool add(CloudRecordID id);
    bool contains(const CloudRecordID& id) const { return index_.contains(id); }
    std::size_t size() const { return index_.size(); }
    // Returns the first ids, those under way before the others.
    std::vector<CloudRecordID> all(std::size_t limit) const;
    // Returns the first ids that are neither under way nor held back.
    std::vector<CloudRecordID> oldest(std::size_t limit) const;

    // Moves a waiting id to those under way. Returns false if it is not waiting.
    bool begin(const CloudRecordID& id);
    // Moves an id that is under way to the front of the waiting ones.
    void giveBack(const CloudRecordID& id);
    void remove(const CloudRecordID& id);
    // Removes the id. Added again, it is held back until releaseRefused().
    void refuse(const CloudRecordID& id);
    void releaseRefused();

private:
    enum class Place { waiting, underWay, heldBack };
    struct Entry {
        CloudRecordID id;
        Place place;
    };
    using List = std::list<Entry>;

    // Finds entries by their ids, which are stored in the lists only.
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
