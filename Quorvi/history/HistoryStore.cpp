#include "Quorvi/history/HistoryStore.h"

#include <utility>

namespace quorvi {

void MemoryHistoryStore::record(std::string text, double duration, std::string appName,
                                std::string language, TranscriptionModel model, Date date) {
    DictationRecord record;
    record.date = date;
    record.text = std::move(text);
    record.audioSeconds = duration;
    record.appName = std::move(appName);
    record.language = std::move(language);
    record.modelID = rawValue(model);
    records_.insert(records_.begin(), std::move(record));
}

}  // namespace quorvi
