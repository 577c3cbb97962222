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
#include "Quorvi/settings/Settings.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/history/TranscriptRetention.h"
#include "QuorviCore/locale/Calendar.h"
#include "QuorviCore/messages/Message.h"
#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi {

// The saved dictations of the running application. Reads the file in the background and then
// applies the changes made meanwhile; writes the whole list in the background after every change. A
// history that cannot be read is never overwritten: new dictations then last until the process
// ends. Main thread; lives as long as the application.
class HistoryStore {
public:
    // All references outlive the store. The executor should have no urgent work.
    struct Environment {
        Preferences& preferences;
        FileStore& files;
        std::filesystem::path path;
        Executor& executor;
        Scheduler& scheduler;
        Pasteboard& pasteboard;
        std::function<Calendar()> calendar;  // the user's current calendar; cheap
    };

    explicit HistoryStore(Environment environment);
    ~HistoryStore();
    HistoryStore(const HistoryStore&) = delete;
    HistoryStore& operator=(const HistoryStore&) = delete;

    // Called after any change of the state below; observers re-read it.
    [[nodiscard]] Subscription onChange(std::function<void()> observer) {
        return changes_.subscribe(std::move(observer));
    }

    // Newest first. While loading, only the dictations since the start.
    const DictationRecords& records() const { return records_; }
    bool isLoading() const { return phase_ == Phase::loading; }
    // Increases with every change of the records.
    std::uint64_t generation() const { return generation_; }
    // Why the history could not be read, or the last write of it failed.
    const std::optional<Message>& persistenceError() const { return persistenceError_; }

    // Whether new records keep their text.
    bool keepTranscripts() const { return settings_.get(setting::keepTranscripts); }
    void setKeepTranscripts(bool keep) { settings_.set(setting::keepTranscripts, keep); }
    // How long texts are kept: forever if the user's choice could not be read.
    TranscriptRetention retention() const;
    void setRetention(TranscriptRetention retention) {
        settings_.set(setting::transcriptRetention, retention);
    }

    // `text` is the final inserted text, `duration` the length of the recording in seconds,
    // `language` the raw value of the DictationLanguage. Texts without words are not recorded.
    void record(const std::string& text, double duration, const std::string& appName,
                const std::string& language, DictationCostEstimate price, Date date);
    void remove(const Uuid& id);
    void clear();
    // Removes texts that are older than the retention allows.
    void prune(Date now);

    // Replaces the whole list with one that was merged from it. Returns false if the history has
    // not been read, because the list would lack the records in the file.
    bool replaceFromSync(const DictationRecords& records);

    // Copies the text of the record, if any, to the clipboard.
    void copy(const DictationRecord& record);

    // Blocks until everything is written or the write has failed. For shutting down only.
    void flush();
    // Returns a function that writes everything recorded up to its call and returns whether that
    // succeeded. The function blocks; callable on any thread, also after the store is destroyed.
    std::function<bool()> flusher() const { return writer_.flusher(); }

private:
    enum class Phase { loading, saving, readOnly };
    // Changes while loading.
    struct Clearing {};
    using Change = std::variant<DictationRecord, Uuid, Clearing>;
    struct Loading;

    void load();
    void loaded(Loading& loading);
    void apply(Change change);
    DictationRecords retained(const DictationRecords& records, Date now) const;
    void setRecords(DictationRecords records);
    void setPersistenceError(std::optional<Message> error);
    void persist();
    void written(std::uint64_t revision, bool saved);

    Environment environment_;
    Settings settings_{environment_.preferences};
    Observable changes_;
    DictationRecords records_;
    std::optional<Message> persistenceError_;

    Phase phase_ = Phase::loading;
    std::vector<Change> changesWhileLoading_;
    std::shared_ptr<Loading> loading_;
    std::uint64_t generation_ = 0;
    std::uint64_t revision_ = 0;  // of the last scheduled write
    Lifetime lifetime_;
    HistoryWriter writer_;
    Subscription keepingObserver_, retentionObserver_;
    TaskScope tasks_;
};

}  // namespace quorvi
