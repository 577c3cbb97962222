#pragma once

#include "Quorvi/platform/FileStore.h"

namespace quorvi {

// Files on a local disk. A replacement is a new file beside the old one, fsync, rename, and fsync
// of the folder. Follows a symbolic link, so that a file that the user keeps elsewhere stays there.
// Stateless; thread-safe.
class PosixFileStore final : public FileStore {
public:
    // Whether an existing folder is closed to other users, or keeps its mode because the desktop's
    // programs share it. One that the user has named must exist, and may be open to others: only a
    // regular file is replaced there, and no link is followed.
    enum class Folder { ofTheUserAlone, asItIs, named };

    explicit PosixFileStore(Folder folder = Folder::ofTheUserAlone) : folder_(folder) {}

    std::optional<std::string> read(const std::filesystem::path& file) override;
    void replace(const std::filesystem::path& file, std::span<const std::string_view> parts,
                 const std::filesystem::path& previous = {}) override;
    // Keeps one piece in memory at a time.
    void replaceInPieces(const std::filesystem::path& file,
                         const std::function<std::string_view()>& next) override;

private:
    template <class Write>
    void replaceWith(const std::filesystem::path& name, const std::filesystem::path& previous,
                     Write write);

    const Folder folder_;
};

}  // namespace quorvi
