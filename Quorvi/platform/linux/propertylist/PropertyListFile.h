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

// A dictionary in a binary property list, and the changes that are not written yet. Other processes
// may change the file; a lock file beside it serialises the writers. Thread-safe except for load(),
// which comes first; only load() and write() touch the disk. Shared by its owner and the writes
// under way.
class PropertyListFile {
public:
    using Value = std::shared_ptr<const PropertyList>;
    using Values = std::map<std::string, Value, std::less<>>;
    using Changes = Values;  // no value where the key is removed

    enum class Problem { none, notRead, notWritten };

    // The result of a write: the values that another process has changed since the last write, as
    // of the owner's change number `revision`.
    struct Outcome {
        Changes foreign;
        std::uint64_t revision = 0;
        Problem problem = Problem::none;
    };

    PropertyListFile(FileStore& files, std::filesystem::path file);

    // Returns the stored values; those of the previous generation if the file can't be read.
    Values load();
    // Whether the file could not be read or parsed; it is never written then.
    bool isBlocked() const;

    // Notes a change to be written; a null value removes the key. Returns the number of the change,
    // and whether the caller has to schedule a write.
    struct Noted {
        std::uint64_t revision;
        bool needsWrite;
    };
    Noted change(std::string_view key, Value value);

    // Writes the noted changes durably. Blocks; never throws. Returns whether there is an outcome
    // to take.
    bool write();
    std::vector<Outcome> takeOutcomes();
    // Whether the last write succeeded; waits for one under way.
    bool isWritten() const;

private:
    // Returns nullopt if there is no file. Throws if it can't be read or parsed.
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
