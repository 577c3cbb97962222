#pragma once

#include "Quorvi/platform/FileStore.h"

namespace quorvi {

// Files on a local disk: a new file beside the old one, fsync, rename, fsync of the folder. A
// symbolic link is followed, so that a file that the user keeps elsewhere stays there. Holds no
// state; thread-safe.
class PosixFileStore final : public FileStore {
public:
    // Whether a folder that is there already is closed to other users, or is one that the desktop's
    // programs share and keeps its mode.
    enum class Folder { ofTheUserAlone, asItIs };

    explicit PosixFileStore(Folder folder = Folder::ofTheUserAlone) : folder_(folder) {}

    std::optional<std::string> read(const std::filesystem::path& file) override;
    void replace(const std::filesystem::path& file, std::span<const std::string_view> parts,
                 const std::filesystem::path& previous = {}) override;
    // One piece is in memory at a time.
    void replaceInPieces(const std::filesystem::path& file,
                         const std::function<std::string_view()>& next) override;

private:
    template <class Write>
    void replaceWith(const std::filesystem::path& name, const std::filesystem::path& previous,
                     Write write);

    const Folder folder_;
};

}  // namespace quorvi
