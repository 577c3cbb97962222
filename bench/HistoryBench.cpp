// Ten years of dictations: loading, saving, adding one, searching, and a page's summaries, each
// with a simple implementation as the reference.

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <functional>

#include "Quorvi/history/HistoryStore.h"
#include "Quorvi/platform/linux/posix/ColdFile.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/history/HistoryIndex.h"
#include "QuorviCore/history/HistorySummaries.h"
#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/text/Folding.h"
#include "bench/Figure.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/support/TestFolder.h"
#include "tests/support/reference/GeneratedHistory.h"
#include "tests/support/reference/LiteralUsage.h"

namespace quorvi::bench {
namespace {

using namespace std::chrono_literals;

constexpr Date newest{800'000'000};

std::size_t sink = 0;

double medianOf(int runs, const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const double start = millisecondsNow();
        work();
        times.push_back(millisecondsNow() - start);
    }
    return median(times);
}

double residentMegabytes() {
    ColdMemory::giveBack();
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

// A record as a plain structure, for the reference.
struct PlainRecord {
    std::string id, text, appName, language, modelID, pricingDate;
    double date, audioSeconds, usdPerMinute;
    std::int64_t wordCount;
    bool hasText, hasEstimate;
};

std::string textOf(const rapidjson::Value& object, const char* key) {
    const auto& value = object[key];
    return {value.GetString(), value.GetStringLength()};
}

std::vector<PlainRecord> loadPlainly(FileStore& files, const std::filesystem::path& path) {
    const auto content = files.read(path);
    rapidjson::Document document;
    json::parse(document, *content);
    std::vector<PlainRecord> records;
    for (const auto& object : document["records"].GetArray()) {
        PlainRecord record{};
        record.id = textOf(object, "id");
        record.appName = textOf(object, "appName");
        record.language = textOf(object, "language");
        record.date = object["date"].GetDouble();
        record.audioSeconds = object["audioSeconds"].GetDouble();
        record.wordCount = object["wordCount"].GetInt64();
        record.hasText = object.HasMember("text");
        if (record.hasText) record.text = textOf(object, "text");
        record.hasEstimate = object.HasMember("costEstimate");
        if (record.hasEstimate) {
            const auto& estimate = object["costEstimate"];
            record.modelID = textOf(estimate, "modelID");
            record.pricingDate = textOf(estimate, "pricingDate");
            record.usdPerMinute = estimate["usdPerMinute"].GetDouble();
        }
        records.push_back(std::move(record));
    }
    return records;
}

void savePlainly(FileStore& files, const std::filesystem::path& path,
                 const std::vector<PlainRecord>& records) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    const auto string = [&writer](const char* key, const std::string& value) {
        writer.Key(key);
        writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    };
    const auto number = [&writer](const char* key, double value) {
        writer.Key(key);
        writer.Double(value);
    };
    writer.StartObject();
    writer.Key("version");
    writer.Int(1);
    writer.Key("records");
    writer.StartArray();
    for (const auto& record : records) {
        writer.StartObject();
        string("id", record.id);
        number("date", record.date);
        if (record.hasText) string("text", record.text);
        writer.Key("wordCount");
        writer.Int64(record.wordCount);
        number("audioSeconds", record.audioSeconds);
        string("appName", record.appName);
        string("language", record.language);
        if (record.hasEstimate) {
            writer.Key("costEstimate");
            writer.StartObject();
            string("modelID", record.modelID);
            number("usdPerMinute", record.usdPerMinute);
            string("pricingDate", record.pricingDate);
            writer.EndObject();
        }
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
    files.replace(path, std::array<std::string_view, 1>{{{buffer.GetString(), buffer.GetSize()}}});
}

class Bench {
public:
    Bench(std::size_t count, std::string suffix)
        : suffix_(std::move(suffix)), path_(folder_.path() / "history.json") {
        // In a separate process, so that this process's memory holds only the measured data.
        const pid_t child = fork();
        if (child == 0) {
            file().save(DictationRecords(test::GeneratedHistory(count, newest).take()));
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        if (status != 0) std::exit(1);
    }

    void run() {
        measureMemory();
        measureLoadAndSave();
        measureRecording();
        measureSearch();
        measureSummaries();
    }

private:
    HistoryFile file() { return {files_, path_}; }
    std::string name(const char* figure) const { return figure + suffix_; }

    // All that the application keeps of a history: the records and the search index.
    void measureMemory() {
        const double before = residentMegabytes();
        records_ = file().load();
        const double records = residentMegabytes() - before;
        index_.update(records_);
        const double all = residentMegabytes() - before;
        double text = 0;
        for (const auto& record : records_)
            if (record.text) text += static_cast<double>(record.text->size()) / 1e6;
        const auto plain = loadPlainly(files_, path_);
        const double plainAll = residentMegabytes() - before - all;
        sink += plain.size();
        figure(name("history_memory"), all / text, "x", plainAll / text);
        figure(name("history_memory_records"), records, "MB");
    }

    void measureLoadAndSave() {
        const double load = medianOf(7, [this] { sink += file().load().size(); });
        const double save = medianOf(7, [this] { file().save(records_); });
        std::vector<PlainRecord> plain;
        const double loadingPlainly = medianOf(3, [&] { plain = loadPlainly(files_, path_); });
        const auto other = folder_.path() / "plain.json";
        const double savingPlainly = medianOf(3, [&] { savePlainly(files_, other, plain); });
        figure(name("history_load"), load, "ms", loadingPlainly);
        figure(name("history_save"), save, "ms", savingPlainly);
        std::filesystem::remove(other);
    }

    // The main thread's work for a dictation. The reference inserts it into a list, searches the
    // list and copies it for the writer.
    void measureRecording() {
        LoopScheduler scheduler;
        SerialExecutor executor("history");
        test::FakePasteboard pasteboard(scheduler);
        MemoryPreferences preferences;
        preferences.setInteger("transcriptRetention", 0);
        HistoryStore store({preferences, files_, path_, executor, scheduler, pasteboard,
                            [this] { return calendar_; }});
        scheduler.runUntil([&] { return !store.isLoading(); }, 60s);
        // From here on texts expire as the days pass.
        store.setRetention(TranscriptRetention::ninetyDays);
        const auto observer = store.onChange([] { ++sink; });
        const std::string text(250, 'x');
        double date = newest.secondsSinceReferenceDate;
        std::vector<double> times;
        for (int i = 0; i < 400; ++i) {
            date += 600;
            const double start = millisecondsNow();
            store.record("some words " + text, 12, "Mail", "automatic",
                         DictationCostEstimate::of(TranscriptionModel::mini), {date});
            times.push_back(millisecondsNow() - start);
            scheduler.runFor(2ms);
        }
        std::vector<DictationRecord> list(records_.begin(), records_.end());
        std::vector<DictationRecord> snapshot;
        const double plainly = medianOf(5, [&] {
            list.insert(list.begin(), list.front());
            const auto cutoff = calendar_.addingDays(newest, -90);
            for (auto& record : list)
                if (record.date < cutoff) record.text.reset();
            snapshot = list;
        });
        figure(name("history_record_main"), median(times), "ms", plainly);
        figure(name("history_record_main_p99"), percentile(times, 0.99), "ms");
        store.flush();
    }

    void measureSearch() {
        HistoryIndex fresh;
        const double building = medianOf(1, [&] { fresh.update(records_); });
        const auto more = records_.prepending(records_[0]);
        const double updating = medianOf(1, [&] { fresh.update(more); });
        std::vector<double> slow, quick;
        for (const std::string query : {"q", "qu", "quarterly", "CAFE", "ευχαριστω", "e",
                                        "nowhere to be found", "συνάντηση στις", "thanks, re"}) {
            slow.push_back(medianOf(
                5, [&] { sink += index_.find(query, HistoryIndex::Among::texts).size(); }));
            if (quick.size() < 3) quick.push_back(findingPlainly(query));
        }
        figure(name("history_search"), percentile(slow, 1), "ms", median(quick));
        figure(name("history_search_median"), median(slow), "ms", median(quick));
        figure(name("history_index"), building, "ms");
        figure(name("history_index_update"), updating, "ms");
    }

    double findingPlainly(const std::string& query) {
        return medianOf(1, [&] {
            const auto folded = text::caseFolded(text::withoutDiacritics(query));
            for (const auto& record : records_)
                sink += record.text &&
                        text::caseFolded(text::withoutDiacritics(*record.text)).find(folded) !=
                            std::string::npos;
        });
    }

    void measureSummaries() {
        const std::vector<DictationRecord> list(records_.begin(), records_.end());
        for (const auto* zone : {"Europe/Athens", "Asia/Kolkata"}) {
            const Calendar calendar(zone, "en_US");
            const auto from = *startOf(UsagePeriod::month, newest, calendar);
            test::LiteralUsage literal(calendar);
            const double plainly = medianOf(3, [&] {
                sink += literal.summary(list, newest, 84).days.size();
                const auto chosen = literal.filter(list, from, newest);
                sink += literal.summary(chosen, newest, 84).days.size();
                sink += literal.cost(chosen).models.size();
            });
            HistorySummaries kept;
            const auto display = [&](HistorySummaries& summaries, const Calendar& with) {
                sink += summaries.allTime(records_, newest, with).days.size();
                sink +=
                    summaries.period(UsagePeriod::month, records_, newest, with).cost.models.size();
            };
            const double first = medianOf(5, [&] {
                HistorySummaries summaries;
                display(summaries, Calendar(zone, "en_US"));
            });
            const double changed = medianOf(5, [&] {
                HistorySummaries summaries;
                display(summaries, calendar);
            });
            display(kept, calendar);
            const double unchanged = medianOf(99, [&] { display(kept, calendar); });
            const auto label = std::string(zone) == "Asia/Kolkata" ? "_kolkata" : "";
            figure(name("summaries") + label, changed, "ms", plainly);
            figure(name("summaries_first") + label, first, "ms", plainly);
            figure(name("summaries_unchanged") + label, unchanged, "ms", plainly);
        }
    }

    const std::string suffix_;
    test::TestFolder folder_;
    PosixFileStore files_;
    const std::filesystem::path path_;
    const Calendar calendar_{"Europe/Athens", "en_US"};
    DictationRecords records_;
    HistoryIndex index_;
};

}  // namespace
}  // namespace quorvi::bench

int main() {
    const quorvi::test::TestFolder folder;
    quorvi::ColdMemory::use(*new quorvi::ColdFile(folder.path()));
    quorvi::bench::Bench(200'000, "").run();
    quorvi::bench::Bench(20'000, "_20000").run();
    return quorvi::bench::sink == 0;
}
