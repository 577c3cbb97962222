#include "Quorvi/history/HistoryFile.h"

#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/history/HistoryArchive.h"

namespace quorvi {

DictationRecords HistoryFile::load() const {
    auto content = store_.read(path_);
    if (!content) return {};
    const auto archive = HistoryArchive::decode(*std::move(content));
    if (archive.version != HistoryArchive::currentVersion)
        throw QuorviError::message(say::historyFromNewerVersion());
    return archive.records.newestFirst();
}

void HistoryFile::save(const DictationRecords& records) const {
    HistoryArchiveEncoder encoder(records);
    store_.replaceInPieces(path_, [&encoder] { return encoder.next(); });
}

}  // namespace quorvi
