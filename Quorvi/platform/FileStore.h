#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvi {

// Whole files that hold what the user must not lose. Each operation blocks for the disk, so it runs
// on an executor, or at start-up. Thread-safe for different files.
class FileStore {
public:
    virtual ~FileStore() = default;

    // The content; nothing when there is no such file. Throws std::system_error.
    virtual std::optional<std::string> read(const std::filesystem::path& file) = 0;

    // Replaces the file by the parts, one after another, so that whatever happens meanwhile the old
    // content or the new one is there, whole, and the new one is on the disk when this returns. The
    // folder is made when it is missing, and both belong to the user alone (0700, 0600). With
    // `previous`, the old content stays under that name in the same folder. Throws
    // std::system_error; the old content is then still there.
    virtual void replace(const std::filesystem::path& file, std::span<const std::string_view> parts,
                         const std::filesystem::path& previous = {}) = 0;

    // The same for a content that is made while it is written: `next` yields one piece after the
    // other, each valid until the next call, and an empty one at the end. What it throws is passed
    // on, and leaves the old content. Here the pieces are gathered in memory.
    virtual void replaceInPieces(const std::filesystem::path& file,
                                 const std::function<std::string_view()>& next);
};

}  // namespace quorvi
