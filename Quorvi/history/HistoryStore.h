#pragma once

#include <string>
#include <vector>

#include "QuorviCore/history/DictationRecord.h"
#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi {

// The saved dictations, newest first. Main thread.
class HistoryStore {
public:
    virtual ~HistoryStore() = default;

    // `text` is the final inserted text, `duration` the recording's length in seconds, `language`
    // the raw value of the DictationLanguage used.
    virtual void record(std::string text, double duration, std::string appName,
                        std::string language, TranscriptionModel model, Date date) = 0;

    // Blocks until everything recorded is where it is kept.
    virtual void flush() = 0;

    virtual const std::vector<DictationRecord>& records() const = 0;
};

// Keeps the dictations for the life of the process only.
class MemoryHistoryStore final : public HistoryStore {
public:
    void record(std::string text, double duration, std::string appName, std::string language,
                TranscriptionModel model, Date date) override;
    void flush() override {}
    const std::vector<DictationRecord>& records() const override { return records_; }

private:
    std::vector<DictationRecord> records_;
};

}  // namespace quorvi
