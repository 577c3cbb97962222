#include "QuorviCore/transfer/ExportDocument.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "QuorviCore/Error.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/sync/LocalSnapshot.h"
#include "tests/support/Written.h"
#include "tests/support/reference/GeneratedHistory.h"

namespace quorvi::test {
namespace {

void ignore(std::size_t, std::size_t) {}

std::string documentOf(std::vector<SyncItem> items) {
    ExportEncoder encoder(std::move(items));
    auto document = written(encoder);
    EXPECT_EQ(encoder.done(), encoder.size());
    return document;
}

std::vector<SyncItem> sample(std::size_t dictations = 3) {
    std::vector<SyncItem> items;
    std::int64_t revision = 1;
    for (const auto& record : GeneratedHistory(dictations).take())
        items.emplace_back(LocalSnapshot::historyId(record.id), encodeRecord(record), ++revision,
                           "dev\"ice\n", !record.text);
    const TextCorrection rule{.id = "01234567-89AB-CDEF-0123-456789ABCDEF",
                              .original = "a \"b\"",
                              .replacement = "γ\n",
                              .updatedAt = {8.5}};
    items.emplace_back("correction:" + rule.id, encodeCorrection(rule), 7, "device", false);
    const SettingValues settings{{"a flag", false},
                                 {"hotkey", bytesOf(R"({"key":61,"name":"Ö"})")},
                                 {"number", std::int64_t{-30}},
                                 {"text", std::string("Κουζίνα \"x\"\n")},
                                 {"text, empty", std::string()}};
    for (const auto& [key, value] : settings)
        items.emplace_back("setting:" + key, LocalSnapshot::encode(value), 253'402'300'799'999,
                           "device", false);
    return items;
}

TEST(ExportDocument, RoundTripsInPiecesWithoutDeletedItems) {
    EXPECT_TRUE(decodeExport(documentOf({}), ignore).empty());
    EXPECT_EQ(decodeExport(documentOf(sample()), ignore), sample());
    // More than one piece.
    std::size_t reports = 0;
    EXPECT_EQ(decodeExport(documentOf(sample(3000)),
                           [&](std::size_t done, std::size_t of) {
                               EXPECT_LE(done, of);
                               ++reports;
                           }),
              sample(3000));
    EXPECT_EQ(reports, 4u);

    // The order does not matter; items that the document has no form for are left out.
    auto items = sample();
    std::rotate(items.begin(), items.begin() + 4, items.end());
    items.emplace_back("setting:gone", std::nullopt, 9, "device", false);
    items.emplace_back("setting:odd", SharedString("no property list"), 9, "device", false);
    items.emplace_back("other:thing", SharedString("{}"), 9, "device", false);
    EXPECT_EQ(decodeExport(documentOf(items), ignore), sample());
}

TEST(ExportDocument, RefusesWhatIsNotWholeOrNotAsItShouldBe) {
    const auto whole = documentOf(sample());
    for (std::size_t size = 0; size + 1 < whole.size(); size += 7)
        EXPECT_THROW(decodeExport(whole.substr(0, size), ignore), QuorviError) << size;

    const auto with = [&](const std::string& old, const std::string& replacement) {
        auto changed = whole;
        const auto at = changed.find(old);
        EXPECT_NE(at, changed.npos) << old;
        if (at != changed.npos) changed.replace(at, old.size(), replacement);
        return changed;
    };
    EXPECT_EQ(decodeExport(with("\"version\":1", R"("version":1,"note":[{}])"), ignore), sample());
    const std::vector<std::pair<std::string, std::string>> faults{
        {"quorvi-export", "quorvi-other"},
        {"\"history\":[", "\"history\":{}, \"x\":["},
        {"\"corrections\"", "\"correction\""},
        {"\"revision\":7", "\"revision\":0"},
        {"\"revision\":7", "\"revision\":9223372036854775807"},
        {"\"revision\":7", "\"revision\":7.5"},
        {"\"redacted\":false,\"revision\":7", "\"revision\":7"},
        {"\"device\":\"device\"", "\"device\":\"\""},
        {"\"audioSeconds\":", "\"audio\":"},
        {"\"isEnabled\":true", "\"isEnabled\":1"},
        {"01234567-89AB", "01234567-89A"},
        {"\"value\":-30", "\"value\":null"},
        {"\"value\":-30", "\"value\":30.5"},
        {"\"value\":-30", "\"value\":0E56"},
        {"\"value\":-30",
         R"("value":{"a":)" + std::string(88'000, '[') + std::string(88'000, ']') + "}"},
        {"Κουζίνα", "\xCE"},
    };
    for (const auto& [old, replacement] : faults)
        EXPECT_THROW(decodeExport(with(old, replacement), ignore), QuorviError) << replacement;
    EXPECT_THROW(decodeExport(std::string(1'000'000, '['), ignore), QuorviError);
    try {
        decodeExport(with("\"version\":1", "\"version\":2"), ignore);
        FAIL() << "a later version was read";
    } catch (const QuorviError& error) {
        EXPECT_EQ(error.sentence(), say::exportFromNewerVersion());
    }
}

}  // namespace
}  // namespace quorvi::test
