#include "tests/support/reference/RandomSyncState.h"

namespace quorvi::test {

std::string documentOf(const SyncState& state) {
    SyncDocumentEncoder encoder(state);
    std::string document;
    for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) document += piece;
    return document;
}

}  // namespace quorvi::test
