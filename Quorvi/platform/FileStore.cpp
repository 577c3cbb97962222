#include "Quorvi/platform/FileStore.h"

#include <array>

namespace quorvi {

void FileStore::replaceInPieces(const std::filesystem::path& file,
                                const std::function<std::string_view()>& next) {
    std::string content;
    for (auto piece = next(); !piece.empty(); piece = next()) content += piece;
    replace(file, std::array<std::string_view, 1>{content});
}

}  // namespace quorvi
