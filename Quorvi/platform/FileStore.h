#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvi {

// Files with data that the user must not lose, read and replaced as a whole. Operations block on
// the disk, so they run on an executor or at start-up. Thread-safe for different files.
class FileStore {
public:
    virtual ~FileStore() = default;

    // Returns the content, nullopt if there is no such file. Throws std::system_error.
    virtual std::optional<std::string> read(const std::filesystem::path& file) = 0;

    // Replaces the file atomically and durably by the concatenated parts: a crash leaves either the
    // old or the new content, and the new content is on the disk when this returns. Creates the
    // folder if it is missing; both belong to the user alone (0700, 0600). With `previous`, the old
    // content stays under that name in the same folder. On failure throws std::system_error and
    // keeps the old content.
    virtual void replace(const std::filesystem::path& file, std::span<const std::string_view> parts,
                         const std::filesystem::path& previous = {}) = 0;

    // The same for content that is generated while it is written: `next` returns one piece after
    // another, each valid until the next call, and an empty one at the end. If it throws, the
    // exception is passed on and the old content kept. This default collects the pieces in memory.
    virtual void replaceInPieces(const std::filesystem::path& file,
                                 const std::function<std::string_view()>& next);
};

}  // namespace quorvi
