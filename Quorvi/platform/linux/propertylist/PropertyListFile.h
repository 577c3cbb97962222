#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/FileStore.h"
#include "QuorviCore/propertylist/PropertyList.h"

namespace quorvi {

// A dictionary in a binary property list, and the changes that are still to be written to it. Other
// processes may change the same file: a lock file beside it keeps the writers apart. Thread-safe
// but for load(), which comes first; only load() and write() touch the disk. Lives as long as
// somebody, the owner or a write on its way, has a share in it.
class PropertyListFile {
public:
    using Value = std::shared_ptr<const PropertyList>;
    using Values = std::map<std::string, Value, std::less<>>;
    using Changes = Values;  // no value where the key is removed

    enum class Problem { none, notRead, notWritten };

    // What became of a write: the values that another process has changed since the last time, as
    // of the owner's change number `revision`.
    struct Outcome {
        Changes foreign;
        std::uint64_t revision = 0;
        Problem problem = Problem::none;
    };

    PropertyListFile(FileStore& files, std::filesystem::path file);

    // The stored values; those of the previous generation when the file can't be read.
    Values load();
    // Whether the file could not be read or understood; it is left alone from then on.
    bool isBlocked() const;

    // Notes a change to be written; no value removes the key. The number of the change, and whether
    // a write has to be asked for.
    struct Noted {
        std::uint64_t revision;
        bool needsWrite;
    };
    Noted change(std::string_view key, Value value);

    // Writes what has been noted, durably. Blocks; throws nothing. Returns whether there is an
    // outcome to be taken.
    bool write();
    std::vector<Outcome> takeOutcomes();
    // Whether the last write succeeded. Waits for one that is under way.
    bool isWritten() const;

private:
    // Nothing when there is no file. Throws when there is one that can't be read or understood.
    std::optional<Values> read(const std::filesystem::path& file) const;
    Changes merge(const Changes& changes);
    void store(const Values& values);

    FileStore& files_;
    const std::filesystem::path path_;
    const std::filesystem::path previous_;

    mutable std::mutex writing_;  // held for the whole of a write
    Values base_;                 // what the file held when it was last seen
    bool lastFailed_ = false;

    mutable std::mutex mutex_;  // guards the rest; never held while the disk works
    Changes pending_;
    std::uint64_t revision_ = 0;
    bool asked_ = false;
    bool blocked_ = false;
    std::vector<Outcome> outcomes_;
};

}  // namespace quorvi
