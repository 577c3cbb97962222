#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>
#include <random>

#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/text/Text.h"
#include "tests/support/GeneratedHistory.h"

namespace quorvi::test {
namespace {

constexpr auto id = "01234567-89AB-CDEF-0123-456789ABCDEF";

std::string encoded(const DictationRecords& records) {
    HistoryArchiveEncoder encoder(records);
    std::string document;
    for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) document += piece;
    return document;
}

// Each member of a record as it is written, so that a test can change one.
std::vector<std::pair<std::string, std::string>> members() {
    return {{"id", std::string("\"") + id + "\""},
            {"date", "812345678.25"},
            {"text", "\"two words\""},
            {"wordCount", "2"},
            {"audioSeconds", "1.5"},
            {"appName", "\"Mail\""},
            {"language", "\"automatic\""},
            {"costEstimate",
             R"({"modelID":"gpt-transcribe","usdPerMinute":0.0045,"pricingDate":"2026-09-11"})"}};
}

std::string object(const std::vector<std::pair<std::string, std::string>>& all) {
    std::string json = "{";
    for (const auto& [key, value] : all)
        json += (json.size() > 1 ? ",\"" : "\"") + key + "\":" + value;
    return json + "}";
}

std::string recordWith(const std::string& key, const std::string& value) {
    auto all = members();
    for (auto& member : all)
        if (member.first == key) member.second = value;
    return object(all);
}

bool decodes(const std::string& json) {
    try {
        decodeRecord(json);
        return true;
    } catch (const HistoryFormatError&) {
        return false;
    }
}

bool decodesDocument(const std::string& json) {
    try {
        HistoryArchive::decode(json);
        return true;
    } catch (const HistoryFormatError&) {
        return false;
    }
}

TEST(HistoryArchive, ReadsBackExactlyWhatItWrote) {
    std::mt19937_64 random(4);
    auto records = GeneratedHistory(2'000).take();
    std::string everything;
    for (char32_t c = 0; c < 0x110000; c += c < 0x3000 ? 1 : 251) {
        if (c >= 0xD800 && c < 0xE000) continue;
        if (c < 0x80) {
            everything += static_cast<char>(c);
            continue;
        }
        if (c >= 0x10000) everything += static_cast<char>(0xF0 | c >> 18);
        if (c >= 0x800)
            everything +=
                static_cast<char>(c >= 0x10000 ? 0x80 | (c >> 12 & 0x3F) : 0xE0 | c >> 12);
        everything += static_cast<char>(c >= 0x800 ? 0x80 | (c >> 6 & 0x3F) : 0xC0 | c >> 6);
        everything += static_cast<char>(0x80 | (c & 0x3F));
    }
    ASSERT_TRUE(text::isValidUtf8(everything));
    records[0].text = everything;
    records[1].text = "";
    for (auto& record : records) {
        const auto anyDouble = [&] {
            for (;;)
                if (const auto value = std::bit_cast<double>(random()); std::isfinite(value))
                    return value;
        };
        record.date = {anyDouble()};
        record.audioSeconds = anyDouble();
        record.wordCount = static_cast<std::int64_t>(random());
        if (record.costEstimate) record.costEstimate->usdPerMinute = anyDouble();
    }
    const DictationRecords list(records);
    const auto document = encoded(list);
    const auto archive = HistoryArchive::decode(document);
    EXPECT_EQ(archive.version, 1);
    EXPECT_TRUE(archive.records == list);
    EXPECT_TRUE(encoded(archive.records) == document);
    for (std::size_t i = 0; i < 50; ++i)
        EXPECT_EQ(decodeRecord(encodeRecord(records[i])), records[i]);
    EXPECT_EQ(encoded({}), R"({"records":[],"version":1})");
}

TEST(HistoryArchive, WritesNoKeyForWhatIsAbsentAndRepairsMalformedText) {
    const auto record = decodeRecord(
        recordWith("id", "\"01234567-89ab-cdef-0123-456789abcdef\"") /* lower-case digits */);
    EXPECT_EQ(record.id.string(), id);
    auto bare = record;
    bare.text.reset();
    bare.costEstimate.reset();
    const auto json = encodeRecord(bare);
    EXPECT_EQ(json, R"({"appName":"Mail","audioSeconds":1.5,"date":812345678.25,"id":")" +
                        std::string(id) + R"(","language":"automatic","wordCount":2})");
    EXPECT_EQ(decodeRecord(json), bare);
    bare.text = "bad \xFF byte";
    EXPECT_EQ(decodeRecord(encodeRecord(bare)).text, "bad \uFFFD byte");
    bare.date = {std::nan("")};
    EXPECT_THROW(encodeRecord(bare), HistoryFormatError);
}

TEST(HistoryArchive, RefusesARecordWithAnythingMissingOrOfAnotherType) {
    const std::vector<std::string> others{"null", "true",  "1", "\"x\"", "[]",
                                          "{}",   "1e400", "-", "NaN",   "Infinity"};
    const std::map<std::string, std::vector<std::string>> accepted{
        {"id", {}},
        {"date", {"1"}},
        {"text", {"null", "\"x\""}},
        {"wordCount", {"1"}},
        {"audioSeconds", {"1"}},
        {"appName", {"\"x\""}},
        {"language", {"\"x\""}},
        {"costEstimate", {"null"}},
    };
    for (const auto& [key, good] : accepted) {
        for (const auto& other : others)
            EXPECT_EQ(decodes(recordWith(key, other)), std::ranges::count(good, other) == 1)
                << key << " " << other;
        auto rest = members();
        std::erase_if(rest, [&](const auto& member) { return member.first == key; });
        EXPECT_EQ(decodes(object(rest)), key == "text" || key == "costEstimate") << key;
    }
    for (const auto* estimate :
         {R"({"modelID":"x","usdPerMinute":1})", R"({"modelID":"x","pricingDate":"y"})",
          R"({"usdPerMinute":1,"pricingDate":"y"})",
          R"({"modelID":null,"usdPerMinute":1,"pricingDate":"y"})",
          R"({"modelID":"x","usdPerMinute":"1","pricingDate":"y"})"})
        EXPECT_FALSE(decodes(recordWith("costEstimate", estimate))) << estimate;
}

TEST(HistoryArchive, ReadsNumbersInTheirRangeOnly) {
    struct Case {
        const char *key, *value;
        bool accepted;
    };
    const Case cases[] = {
        {"wordCount", "9223372036854775807", true},
        {"wordCount", "9223372036854775808", false},
        {"wordCount", "-9223372036854775808", true},
        {"wordCount", "-9223372036854775809", false},
        {"wordCount", "17.0", true},
        {"wordCount", "1.7e1", true},
        {"wordCount", "17.5", false},
        {"wordCount", "1e30", false},
        {"wordCount", "\"17\"", false},
        {"audioSeconds", "1e400", false},
        {"audioSeconds", "-1", true},
        {"audioSeconds", "1e-400", true},
        {"audioSeconds", "\"NaN\"", false},
        {"audioSeconds", "01", false},
        {"audioSeconds", ".5", false},
        {"date", "1e300", true},
        {"date", "-1e300", true},
        {"date", "-1e309", false},
        {"date", "1.", false},
        {"id", "\"\"", false},
        {"id", "\"01234567-89AB-CDEF-0123-456789ABCDE\"", false},
        {"id", "\"01234567-89AB-CDEF-0123_456789ABCDEF\"", false},
        {"id", "\"01234567-89AB-CDEF-0123-456789ABCDEG\"", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(decodes(recordWith(c.key, c.value)), c.accepted) << c.key << " " << c.value;
    EXPECT_EQ(decodeRecord(recordWith("wordCount", "17")).text, "two words");
    EXPECT_EQ(decodeRecord(recordWith("wordCount", "17")).wordCount, 17);
}

TEST(HistoryArchive, ReadsTextStrictly) {
    const std::pair<std::string, bool> cases[] = {
        {R"("\ud83d\ude42")", true},
        {R"("\ud83d")", false},
        {R"("\ude42")", false},
        {R"("\ude42\ud83d")", false},
        {R"("\ud83dx")", false},
        {R"("\u12")", false},
        {R"("\x")", false},
        {"\"\xC3\"", false},
        {"\"\xC0\x80\"", false},
        {"\"\xED\xA0\x80\"", false},
        {"\"\xF4\x90\x80\x80\"", false},
        {"\"\x01\"", false},
        {"\"\xED\x95\x9C\"", true},
        {R"("\u0000")", true},
        {R"("\/")", true},
        {std::string("\"\0\"", 3), false},
    };
    for (const auto& [text, accepted] : cases) {
        EXPECT_EQ(decodes(recordWith("text", text)), accepted) << text;
        auto all = members();
        all.emplace_back("unknown", text);
        EXPECT_EQ(decodes(object(all)), accepted) << "where nobody looks, " << text;
    }
    EXPECT_EQ(decodeRecord(recordWith("text", R"("a\u0000b\"\\\n")")).text,
              std::string_view("a\0b\"\\\n", 6));
}

TEST(HistoryArchive, RefusesWhatIsNoDocument) {
    const auto record = object(members());
    EXPECT_TRUE(decodesDocument(R"( {"version":1,"records":[)" + record + "]} "));
    EXPECT_TRUE(
        decodesDocument(R"({"x":{"y":[1,{"id":null}],"z":true},"version":2,"records":[]})"));
    for (const auto* json : {"",
                             " ",
                             "null",
                             "[]",
                             "1",
                             "\"\"",
                             "{}",
                             R"({"version":1})",
                             R"({"records":[]})",
                             R"({"version":"1","records":[]})",
                             R"({"version":null,"records":[]})",
                             R"({"version":1.5,"records":[]})",
                             R"({"version":1,"records":{}})",
                             R"({"version":1,"records":null})",
                             R"({"version":1,"records":[null]})",
                             R"({"version":1,"records":[1]})",
                             R"({"version":1,"records":[[]]})",
                             R"({"version":1,"records":[{}]})",
                             R"({"version":1,"records":[]}{})",
                             R"({"version":1,"records":[],})",
                             R"({"version":1,"records":[]} x)",
                             "\xEF\xBB\xBF{\"version\":1,\"records\":[]}"})
        EXPECT_FALSE(decodesDocument(json)) << json;
    EXPECT_FALSE(decodesDocument(std::string(R"({"version":1,"records":[]})") + '\0'));
    EXPECT_FALSE(
        decodesDocument(R"({"version":1,"records":[],"x":)" + std::string(1'000'000, '[')));
    EXPECT_FALSE(decodesDocument(R"({"version":1,"records":[],"x":)" + std::string(100, '[') +
                                 std::string(100, ']') + "}"));
    // Of a key that is there twice the last value counts, and each must be right.
    const auto twice = HistoryArchive::decode(R"({"version":2,"records":[)" + record +
                                              R"(],"records":[],"version":1})");
    EXPECT_EQ(twice.version, 1);
    EXPECT_TRUE(twice.records.empty());
    EXPECT_EQ(HistoryArchive::decode(R"({"version":1,"records":[)" + record + "," + record + "]}")
                  .records.size(),
              2u)
        << "two records may have one id";
}

TEST(HistoryArchive, RefusesADocumentThatIsCutOffAnywhere) {
    const auto document = encoded(DictationRecords(GeneratedHistory(3).take()));
    ASSERT_TRUE(decodesDocument(document));
    for (std::size_t size = 0; size < document.size(); ++size)
        EXPECT_FALSE(decodesDocument(document.substr(0, size))) << size;
}

}  // namespace
}  // namespace quorvi::test
