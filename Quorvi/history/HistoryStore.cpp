#include "Quorvi/history/HistoryStore.h"

#include <mutex>
#include <utility>

namespace quorvi {

namespace {

Task<void> putOnClipboard(Pasteboard& pasteboard, std::string text) {
    auto writing = pasteboard.writeText(std::move(text), TranscriptVisibility::everywhere);
    co_await writing;
}

}  // namespace

// The reading of the file, by whichever thread comes first.
struct HistoryStore::Loading {
    Loading(HistoryFile f, TranscriptRetention r, Date n, Calendar c)
        : file(std::move(f)), retention(r), now(n), calendar(std::move(c)) {}

    // Returns once the file has been read.
    void run() {
        std::lock_guard lock(mutex);
        if (done) return;
        done = true;
        try {
            auto found = file.load();
            // Dropping the texts of years takes a while, so it is done here too.
            auto kept = applyingRetention(found, retention, now, calendar);
            changed = !kept.isSharedWith(found);
            records = std::move(kept);
        } catch (const std::exception&) {
            failed = true;
        }
    }

    const HistoryFile file;
    const TranscriptRetention retention;
    const Date now;
    const Calendar calendar;
    std::mutex mutex;
    bool done = false;
    bool failed = false;
    bool changed = false;  // not what the file holds
    DictationRecords records;
};

HistoryStore::HistoryStore(Environment environment)
    : environment_(std::move(environment)),
      writer_(HistoryFile(environment_.files, environment_.path), environment_.executor,
              [&scheduler = environment_.scheduler,
               report = lifetime_.guard([this](std::uint64_t revision, bool saved) {
                   written(revision, saved);
               })](std::uint64_t revision, bool saved) {
                  scheduler.post([report, revision, saved] { report(revision, saved); });
              }),
      tasks_(environment_.scheduler) {
    keepingObserver_ =
        settings_.onChange({&setting::keepTranscripts}, [this] { changes_.notify(); });
    retentionObserver_ = settings_.onChange({&setting::transcriptRetention}, [this] {
        changes_.notify();
        prune(environment_.scheduler.date());
    });
    load();
}

HistoryStore::~HistoryStore() = default;

TranscriptRetention HistoryStore::retention() const {
    const auto& preferences = environment_.preferences;
    // A text that is gone is gone.
    if (!preferences.couldBeRead() && !preferences.integer(setting::transcriptRetention.key()))
        return TranscriptRetention::forever;
    return settings_.get(setting::transcriptRetention);
}

void HistoryStore::load() {
    loading_ =
        std::make_shared<Loading>(HistoryFile(environment_.files, environment_.path), retention(),
                                  environment_.scheduler.date(), environment_.calendar());
    auto report = lifetime_.guard([this, loading = loading_] { loaded(*loading); });
    environment_.executor.run(
        [loading = loading_, report = std::move(report), &scheduler = environment_.scheduler] {
            loading->run();
            scheduler.post(report);
        });
}

void HistoryStore::loaded(Loading& loading) {
    if (!isLoading()) return;  // flush() was first
    loading_.reset();
    const auto changes = std::exchange(changesWhileLoading_, {});
    if (loading.failed) {
        phase_ = Phase::readOnly;
        persistenceError_ = say::historyUnreadable();
        changes_.notify();
        return;
    }
    phase_ = Phase::saving;
    auto records = std::move(loading.records);
    std::swap(records_, records);
    for (const auto& change : changes) apply(change);
    const auto now = environment_.scheduler.date();
    auto kept = retained(records_, now);
    const bool isNew = loading.changed || !changes.empty() || !kept.isSharedWith(records_);
    setRecords(std::move(kept));
    if (isNew) persist();
}

void HistoryStore::apply(Change change) {
    if (auto* record = std::get_if<DictationRecord>(&change))
        records_ = records_.prepending(std::move(*record));
    else if (const auto* id = std::get_if<Uuid>(&change))
        records_ = records_.without(*id);
    else
        records_ = {};
}

void HistoryStore::record(const std::string& text, double duration, const std::string& appName,
                          const std::string& language, DictationCostEstimate price, Date date) {
    auto record = DictationRecord::make(Uuid::random(), date, text, duration, appName, language,
                                        keepTranscripts(), std::move(price));
    if (record.wordCount == 0) return;
    if (isLoading()) changesWhileLoading_.emplace_back(record);
    setRecords(retained(records_.prepending(std::move(record)), date));
    persist();
}

void HistoryStore::remove(const Uuid& id) {
    if (isLoading()) changesWhileLoading_.emplace_back(id);
    setRecords(records_.without(id));
    persist();
}

void HistoryStore::clear() {
    if (isLoading()) {
        changesWhileLoading_.clear();
        changesWhileLoading_.emplace_back(Clearing{});
    }
    setRecords({});
    persist();
}

void HistoryStore::prune(Date now) {
    auto kept = retained(records_, now);
    if (kept.isSharedWith(records_)) return;
    setRecords(std::move(kept));
    persist();
}

bool HistoryStore::replaceFromSync(const DictationRecords& records) {
    if (phase_ != Phase::saving) return false;
    auto kept = retained(records, environment_.scheduler.date());
    if (kept == records_) return true;
    setRecords(std::move(kept));
    persist();
    return true;
}

void HistoryStore::copy(const DictationRecord& record) {
    if (!record.text) return;
    tasks_.start([this, text = record.text->string()](std::stop_token) {
        return putOnClipboard(environment_.pasteboard, text);
    });
}

void HistoryStore::flush() {
    if (const auto loading = loading_) {
        loading->run();
        loaded(*loading);
    }
    writer_.flush();
}

DictationRecords HistoryStore::retained(const DictationRecords& records, Date now) const {
    return applyingRetention(records, retention(), now, environment_.calendar());
}

void HistoryStore::setRecords(DictationRecords records) {
    std::swap(records_, records);
    ++generation_;
    changes_.notify();
    // The old list may be the last owner of very many texts.
    environment_.executor.run([old = std::move(records)] {});
}

void HistoryStore::setPersistenceError(std::optional<Message> error) {
    if (persistenceError_ == error) return;
    persistenceError_ = std::move(error);
    changes_.notify();
}

void HistoryStore::persist() {
    if (phase_ != Phase::saving) return;
    writer_.save(records_, ++revision_);
}

void HistoryStore::written(std::uint64_t revision, bool saved) {
    if (revision == revision_)
        setPersistenceError(saved ? std::nullopt : std::optional(say::historyNotSaved()));
}

}  // namespace quorvi
