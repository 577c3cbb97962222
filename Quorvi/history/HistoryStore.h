#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Quorvi/history/HistoryWriter.h"
#include "Quorvi/platform/FileStore.h"
#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/Preferences.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/history/TranscriptRetention.h"
#include "QuorviCore/locale/Calendar.h"
#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi {

// The saved dictations of the running application. The file is read in the background; what
// happens before that is done is applied to it afterwards. Every change is written in the
// background as a whole. A history that can't be read is never written: what is dictated then lasts
// as long as the process. Main thread; lives as long as the application.
class HistoryStore {
public:
    // All of it outlives the store, and `executor` is used by nobody else that is in a hurry.
    struct Environment {
        Preferences& preferences;
        FileStore& files;
        std::filesystem::path path;
        Executor& executor;
        Scheduler& scheduler;
        Pasteboard& pasteboard;
        std::function<Calendar()> calendar;  // the user's present one; costs nothing
    };

    explicit HistoryStore(Environment environment);
    ~HistoryStore();
    HistoryStore(const HistoryStore&) = delete;
    HistoryStore& operator=(const HistoryStore&) = delete;

    // Told after any change of the state below; observers re-read it.
    [[nodiscard]] Subscription onChange(std::function<void()> observer) {
        return changes_.subscribe(std::move(observer));
    }

    // Newest first. While the file is being read only what was dictated since the start.
    const DictationRecords& records() const { return records_; }
    bool isLoading() const { return phase_ == Phase::loading; }
    // Grows with every change of the records.
    std::uint64_t generation() const { return generation_; }
    // The one problem to show.
    const std::optional<std::string>& persistenceError() const { return persistenceError_; }

    // Whether new records keep their text.
    bool keepTranscripts() const { return keepTranscripts_; }
    void setKeepTranscripts(bool keep);
    TranscriptRetention retention() const { return retention_; }
    void setRetention(TranscriptRetention retention);

    // `text` is the final inserted text, `duration` the recording's length in seconds, `language`
    // the raw value of the DictationLanguage used. A text without words is not recorded.
    void record(const std::string& text, double duration, const std::string& appName,
                const std::string& language, TranscriptionModel model, Date date);
    void remove(const Uuid& id);
    void clear();
    // Removes the texts that are older than the retention allows.
    void prune(Date now);

    // Replaces the whole list by one that was merged from this one. False when the history has not
    // been read, since such a list would lack what is in the file.
    bool replaceFromSync(const DictationRecords& records);

    // Puts the record's text on the clipboard, if it has one.
    void copy(const DictationRecord& record);

    // Blocks until everything recorded is on the disk, or can't be brought there. For shutting
    // down only.
    void flush();
    // What brings everything recorded until it is called to the disk, and says whether it is there.
    // Blocks; for any thread, also after the store is gone.
    std::function<bool()> flusher() const { return writer_.flusher(); }

private:
    enum class Phase { loading, saving, readOnly };
    // What was done while the file was being read.
    struct Clearing {};
    using Change = std::variant<DictationRecord, Uuid, Clearing>;
    struct Loading;

    void readPreferences();
    void load();
    void loaded(Loading& loading);
    void apply(Change change);
    DictationRecords retained(const DictationRecords& records, Date now) const;
    void setRecords(DictationRecords records);
    void setPersistenceError(std::optional<std::string> error);
    void persist();
    void written(std::uint64_t revision, bool saved);

    Environment environment_;
    Observable changes_;
    DictationRecords records_;
    std::optional<std::string> persistenceError_;
    bool keepTranscripts_ = true;
    TranscriptRetention retention_ = TranscriptRetention::ninetyDays;

    Phase phase_ = Phase::loading;
    std::vector<Change> changesWhileLoading_;
    std::shared_ptr<Loading> loading_;
    std::uint64_t generation_ = 0;
    std::uint64_t revision_ = 0;  // of the last write that was scheduled
    Lifetime lifetime_;
    HistoryWriter writer_;
    TaskScope tasks_;
};

}  // namespace quorvi
