// The synchronisation's ledger and archive with 200,000 values: a tick without changes, capturing
// and storing a dictation, merging remote versions, and opening, each with a simple reference.

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <time.h>

#include <array>
#include <functional>

#include "Quorvi/platform/linux/posix/ColdFile.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/sync/SyncArchive.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/json/JsonReading.h"
#include "bench/Figure.h"
#include "tests/support/TestFolder.h"
#include "tests/support/Waiting.h"
#include "tests/support/reference/GeneratedHistory.h"
#include "tests/support/reference/LiteralSync.h"
#include "tests/support/reference/RandomSyncState.h"

namespace quorvi::bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t many = 200'000;
constexpr std::size_t few = 2'000;

std::size_t sink = 0;

double timeOf(const std::function<void()>& work) {
    const double start = millisecondsNow();
    work();
    return millisecondsNow() - start;
}

double medianOf(int runs, const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) times.push_back(timeOf(work));
    return median(times);
}

DictationRecords generated(std::size_t count, unsigned seed = 7) {
    return DictationRecords(test::GeneratedHistory(count, {800'000'000}, seed).take());
}

TextCorrections rules() {
    std::vector<TextCorrection> list;
    for (int i = 0; i < 200; ++i)
        list.push_back({.original = "word " + std::to_string(i), .replacement = "Word"});
    return TextCorrections(std::move(list));
}

SettingValues settings() {
    SettingValues all;
    for (int i = 0; i < 11; ++i) all["setting number " + std::to_string(i)] = std::int64_t{i};
    return all;
}

test::LiteralPayloads literalPayloads(const LocalSnapshot& now) {
    test::LiteralPayloads all;
    for (const auto& record : now.records())
        all["history:" + record.id.string()] = encodeRecord(record);
    for (const auto& rule : now.rules().rules())
        all["correction:" + rule.id] = encodeCorrection(rule);
    for (const auto& [key, value] : now.settings())
        all["setting:" + key] = LocalSnapshot::encode(value).string();
    return all;
}

void measureTick(const LocalSnapshot& captured) {
    std::vector<double> times;
    for (int i = 0; i < 1'000; ++i)
        times.push_back(timeOf([&] {
            const LocalSnapshot now(captured.records(), captured.rules(), settings());
            sink += now.isSharedWith(captured);
        }));
    test::LiteralLedger literal;
    literal.capture(literalPayloads(captured), false, 0);
    const double plainly =
        medianOf(3, [&] { sink += literal.capture(literalPayloads(captured), false, 0).size(); });
    figure("sync_tick", median(times), "ms", plainly);
    figure("sync_tick_p99", percentile(times, 0.99), "ms");
}

// The coding of the literal ledger: base64 digit by digit, JSON through a document.
std::string literalBytes(std::string_view base64) {
    std::string out;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char c : base64) {
        if (c == '=') break;
        const std::uint32_t digit = c >= 'A' && c <= 'Z'   ? c - 'A'
                                    : c >= 'a' && c <= 'z' ? c - 'a' + 26
                                    : c >= '0' && c <= '9' ? c - '0' + 52
                                    : c == '+'             ? 62
                                                           : 63;
        bits = bits << 6 | digit;
        if ((count += 6) >= 8) out += static_cast<char>(bits >> (count -= 8) & 0xFF);
    }
    return out;
}

std::string literalBase64(std::string_view bytes) {
    static constexpr char digits[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    std::uint32_t bits = 0;
    int count = 0;
    for (const unsigned char byte : bytes) {
        bits = bits << 8 | byte;
        for (count += 8; count >= 6; count -= 6) out += digits[bits >> (count - 6) & 63];
    }
    if (count > 0) out += digits[bits << (6 - count) & 63];
    while (out.size() % 4 != 0) out += '=';
    return out;
}

std::string literalEncode(const test::LiteralItem& item) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    const auto text = [&writer](const char* key, const std::string& value) {
        writer.Key(key);
        writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    };
    writer.StartObject();
    text("device", item.device);
    text("id", item.id);
    if (item.payload) text("payload", literalBase64(*item.payload));
    writer.Key("redacted");
    writer.Bool(item.redacted);
    writer.Key("revision");
    writer.Int64(item.revision);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

test::LiteralItem literalDecode(const std::string& json) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseValidateEncodingFlag>(json.data(), json.size());
    test::LiteralItem item;
    item.id = document["id"].GetString();
    item.device = document["device"].GetString();
    item.revision = document["revision"].GetInt64();
    item.redacted = document["redacted"].GetBool();
    if (document.HasMember("payload")) item.payload = literalBytes(document["payload"].GetString());
    return item;
}

// Newer versions of some values, and as many new values.
void measureMerge(const LocalSnapshot& captured) {
    SyncLedger ledger;
    test::LiteralLedger literal{.device = ledger.device().string()};
    ledger.capture(captured.changesFrom(ledger), false, {0});
    for (const auto& [id, item] : ledger.items()) literal.merge(test::LiteralItem::of(item));
    std::vector<std::string> incoming;
    const auto add = [&incoming](const DictationRecord& record) {
        incoming.push_back(SyncItem(LocalSnapshot::historyId(record.id), encodeRecord(record),
                                    2'000'000'000'000, newUuid(), !record.text)
                               .encoded());
    };
    for (std::size_t i = 0; i < 20'000; ++i) add(captured.records()[i * 9]);
    for (const auto& record : generated(20'000, 8)) add(record);

    const double time = timeOf([&] {
        for (const auto& json : incoming) {
            const auto item = SyncItem::decode(json);
            sink += ledger.merge(*item) == *item;
        }
    });
    const double plainly = timeOf([&] {
        for (const auto& json : incoming) {
            const auto item = literalDecode(json);
            literal.merge(item);
            sink += literalEncode(literal.items[item.id]) == json;
        }
    });
    const auto count = static_cast<double>(incoming.size());
    figure("sync_merge", time / count * 1'000, "us/item", plainly / count * 1'000);
}

// An archive on the disk, as in the application.
class Archived {
public:
    Archived() { reopen(); }

    void reopen() {
        archive_.reset();
        test::Running opening(SyncArchive::open({files_, journals_, path(), executor_, loop_}));
        test::await(loop_, opening);
        archive_ = std::move(const_cast<std::unique_ptr<SyncArchive>&>(*opening.value()));
    }
    void persist() {
        test::Running persisting(archive_->persist());
        test::await(loop_, persisting);
    }
    std::filesystem::path path() const { return folder_.path() / "account-sync.json"; }
    SyncArchive& archive() { return *archive_; }
    LoopScheduler& loop() { return loop_; }
    PosixFileStore& files() { return files_; }

private:
    test::TestFolder folder_;
    PosixFileStore files_;
    PosixJournalFiles journals_;
    LoopScheduler loop_;
    SerialExecutor executor_{"sync"};
    std::unique_ptr<SyncArchive> archive_;
};

void fill(Archived& archived, const LocalSnapshot& captured) {
    auto& archive = archived.archive();
    archive.capture(captured.changesFrom(archive.ledger()), false, {0});
    for (const auto& [id, item] : archive.ledger().items())
        archive.setRecord(id, std::string("a change tag of the cloud"));
    archived.persist();
}

// Processor time of this thread, independent of the machine's load.
double workMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// The main thread's work for one dictation until its write is queued, in ms. HistoryBench measures
// the history's list.
double costOfADictation(Archived& archived, LocalSnapshot captured) {
    auto& archive = archived.archive();
    auto records = captured.records();
    const auto added = test::GeneratedHistory(300, {900'000'000}, 9).take();
    std::vector<double> times, untilKept;
    for (const auto& record : added) {
        records = records.prepending(record);
        bool kept = false;
        const double start = millisecondsNow();
        const double workBefore = workMilliseconds();
        const LocalSnapshot now(records, captured.rules(), captured.settings());
        const auto changes = now.changesSince(captured, archive.ledger());
        for (const auto& id : archive.capture(changes, false, record.date)) archive.addPending(id);
        archive.persist([&kept](bool saved) { kept = saved; });
        captured = now;
        times.push_back(workMilliseconds() - workBefore);
        archived.loop().runUntil([&kept] { return kept; }, 60s);
        untilKept.push_back(millisecondsNow() - start);
    }
    figure("sync_until_kept_" + std::to_string(archive.ledger().items().size() / 1'000) + "k",
           median(untilKept), "ms");
    return median(times);
}

void openPlainly(Archived& archived) {
    const auto content = archived.files().read(archived.path());
    rapidjson::Document document;
    json::parse(document, *content);
    test::LiteralLedger ledger;
    std::map<std::string, std::string> records;
    for (const auto& [id, value] : document["ledger"]["items"].GetObject()) {
        test::LiteralItem item{.id = id.GetString(),
                               .revision = value["revision"].GetInt64(),
                               .device = value["device"].GetString(),
                               .redacted = value["redacted"].GetBool()};
        if (value.HasMember("payload")) item.payload = literalBytes(value["payload"].GetString());
        ledger.items[item.id] = item;
    }
    for (const auto& [id, value] : document["ledger"]["baseline"].GetObject())
        ledger.baseline[id.GetString()] = literalBytes(value.GetString());
    for (const auto& [id, value] : document["records"].GetObject())
        records[id.GetString()] = literalBytes(value.GetString());
    sink += ledger.items.size() + records.size();
}

void measureArchive(const LocalSnapshot& captured) {
    Archived large, small;
    fill(large, captured);
    const LocalSnapshot beginning(generated(few), captured.rules(), captured.settings());
    fill(small, beginning);
    const double atFew = costOfADictation(small, beginning);
    const double atMany = costOfADictation(large, captured);
    figure("sync_persist_main", atMany, "ms", atFew);
    figure("sync_persist_growth", atMany / atFew, "times");

    const double flushing = timeOf([&] { large.archive().flush(); });
    const double plainly = timeOf([&] {
        const auto document = test::documentOf(large.archive().state());
        large.files().replace(large.path(), std::array<std::string_view, 1>{document});
    });
    figure("sync_archive_flush", flushing, "ms", plainly);
    figure("sync_archive_size", static_cast<double>(std::filesystem::file_size(large.path())) / 1e6,
           "MB");
    const double opening = timeOf([&] { large.reopen(); });
    figure("sync_archive_open", opening, "ms", timeOf([&] { openPlainly(large); }));
    const double comparing = timeOf([&] {
        test::Running running(large.archive().changesOf(captured));
        test::await(large.loop(), running);
        sink += running.value()->size();
    });
    figure("sync_compare_all", comparing, "ms");
}

}  // namespace
}  // namespace quorvi::bench

int main() {
    using namespace quorvi;
    using namespace quorvi::bench;
    const test::TestFolder folder;
    ColdMemory::use(*new ColdFile(folder.path()));
    const LocalSnapshot captured(generated(many), rules(), settings());
    measureTick(captured);
    measureMerge(captured);
    measureArchive(captured);
    return sink == 0;
}
