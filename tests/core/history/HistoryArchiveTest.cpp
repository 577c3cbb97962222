#include "QuorviCore/history/HistoryArchive.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>

#include "tests/support/Texts.h"
#include "tests/support/Written.h"
#include "tests/support/reference/GeneratedHistory.h"

namespace quorvi::test {
namespace {

using Members = std::vector<std::pair<std::string, std::string>>;

std::string encoded(const DictationRecords& records) {
    return written(HistoryArchiveEncoder(records));
}

// The encoded members of a record.
const Members members{
    {"id", R"("01234567-89AB-CDEF-0123-456789ABCDEF")"},
    {"date", "812345678.25"},
    {"text", R"("two words")"},
    {"wordCount", "2"},
    {"audioSeconds", "1.5"},
    {"appName", R"("Mail")"},
    {"language", R"("automatic")"},
    {"costEstimate",
     R"({"modelID":"gpt-transcribe","usdPerMinute":0.0045,"pricingDate":"2026-09-11"})"}};

std::string object(const Members& all) {
    std::string json;
    for (const auto& [key, value] : all) json += ",\"" + key + "\":" + value;
    return "{" + json.substr(1) + "}";
}

std::string recordWithout(const std::string& key) {
    Members rest = members;
    std::erase_if(rest, [&](const auto& member) { return member.first == key; });
    return object(rest);
}

std::string recordWith(const std::string& key, const std::string& value) {
    return recordWithout(key).insert(1, "\"" + key + "\":" + value + ",");
}

bool decodesDocument(const std::string& json) {
    try {
        HistoryArchive::decode(json);
        return true;
    } catch (const HistoryFormatError&) {
        return false;
    }
}

// Whether a record decodes, alone and as the second of a document, which must agree.
bool decodes(const std::string& json) {
    const bool inDocument =
        decodesDocument(R"({"version":1,"records":[)" + object(members) + "," + json + "]}");
    try {
        decodeRecord(json);
        EXPECT_TRUE(inDocument) << json;
        return true;
    } catch (const HistoryFormatError&) {
        EXPECT_FALSE(inDocument) << json;
        return false;
    }
}

TEST(HistoryArchive, ReadsBackExactlyWhatItWrote) {
    std::mt19937_64 random(4);
    const auto anyDouble = [&] {
        for (;;)
            if (const auto value = std::bit_cast<double>(random()); std::isfinite(value))
                return value;
    };
    auto records = GeneratedHistory(2'000).take();
    std::string everything;
    for (UChar32 c = 0; c < 0x110000; c += c < 0x3000 ? 1 : 251)
        if (!U_IS_SURROGATE(c)) everything += utf8(c);
    records[0].text = everything;
    records[1].text = "";
    for (auto& record : records) {
        record.date = {anyDouble()};
        record.audioSeconds = anyDouble();
        record.wordCount = static_cast<std::int64_t>(random());
        if (record.costEstimate) record.costEstimate->usdPerMinute = anyDouble();
    }
    const DictationRecords list(records);
    const auto archive = HistoryArchive::decode(encoded(list));
    EXPECT_EQ(archive.version, 1);
    EXPECT_TRUE(archive.records == list);
    EXPECT_EQ(decodeRecord(encodeRecord(records[0])), records[0]);
    EXPECT_EQ(encoded({}), R"({"records":[],"version":1})");
}

TEST(HistoryArchive, OmitsAbsentMembersAndRepairsMalformedText) {
    auto record = decodeRecord(recordWith("id", R"("01234567-89ab-cdef-0123-456789abcdef")"));
    record.text.reset();
    record.costEstimate.reset();
    EXPECT_EQ(encodeRecord(record), R"({"appName":"Mail","audioSeconds":1.5,"date":812345678.25,)"
                                    R"("id":"01234567-89AB-CDEF-0123-456789ABCDEF",)"
                                    R"("language":"automatic","wordCount":2})");
    record.text = "bad \xFF byte";
    EXPECT_EQ(decodeRecord(encodeRecord(record)).text, "bad \uFFFD byte");
    record.date = {std::nan("")};
    EXPECT_THROW(encodeRecord(record), HistoryFormatError);
}

// Tries every key with every value; only the listed combinations are accepted.
TEST(HistoryArchive, AcceptsOnlyMembersOfTheirTypeAndRange) {
    const auto strings = split(
        R"("x" "17" "NaN" "" "01234567-89AB-CDEF-0123-456789ABCDE"
           "01234567-89AB-CDEF-0123_456789ABCDEF" "01234567-89AB-CDEF-0123-456789ABCDEG")");
    const auto wholes = split("1 -1 17.0 1.7e1 9223372036854775807 -9223372036854775808");
    const auto numbers = split("1.5 1e300 -1e300 9223372036854775808 -9223372036854775809");
    const auto others = split(R"(true [] {} {"x":1} 1e400 -1e309 - NaN Infinity 01 .5 1.)");
    const auto matches = [](const std::string& key, const std::vector<std::string>& values,
                            bool accepted) {
        for (const auto& value : values)
            EXPECT_EQ(decodes(recordWith(key, value)), accepted) << key << " " << value;
    };
    for (const auto& [key, value] : members) {
        const bool isWhole = key == "wordCount";
        const bool isNumber = isWhole || key == "date" || key == "audioSeconds";
        const bool isOptional = key == "text" || key == "costEstimate";
        matches(key, strings, key == "text" || key == "appName" || key == "language");
        matches(key, wholes, isNumber);
        matches(key, numbers, isNumber && !isWhole);
        matches(key, others, false);
        matches(key, {"null"}, isOptional);
        EXPECT_EQ(decodes(recordWithout(key)), isOptional) << key;
    }
    EXPECT_TRUE(decodes(recordWith("audioSeconds", "1e-400")));
    matches("costEstimate",
            split(R"({"modelID":"x","usdPerMinute":1} {"modelID":"x","pricingDate":"y"}
                     {"usdPerMinute":1,"pricingDate":"y"}
                     {"modelID":null,"usdPerMinute":1,"pricingDate":"y"}
                     {"modelID":"x","usdPerMinute":"1","pricingDate":"y"})"),
            false);
    EXPECT_EQ(decodeRecord(recordWith("wordCount", "17")).wordCount, 17) << "as it is written";
}

TEST(HistoryArchive, ReadsTextStrictly) {
    auto malformed = split(R"("\ud83d" "\ude42" "\ude42\ud83d" "\ud83dx" "\u12" "\x")"
                           " \"\xC3\" \"\xC0\x80\" \"\xED\xA0\x80\" \"\xF4\x90\x80\x80\" \"\x01\"");
    malformed.push_back(std::string("\"\0\"", 3));
    const auto wellFormed = split(R"("\ud83d\ude42" "\u0000" "\/" "한")");
    for (const auto* key : {"text", "nobody looks here"}) {
        for (const auto& text : malformed) EXPECT_FALSE(decodes(recordWith(key, text))) << text;
        for (const auto& text : wellFormed) EXPECT_TRUE(decodes(recordWith(key, text))) << text;
    }
    EXPECT_EQ(decodeRecord(recordWith("text", R"("a\u0000b\"\\\n")")).text,
              std::string_view("a\0b\"\\\n", 6));
}

TEST(HistoryArchive, RefusesIncompleteDocuments) {
    const std::string start = R"({"version":1,"records":[)", record = object(members);
    const std::string nested = R"({"version":1,"records":[],"x":)";
    EXPECT_TRUE(
        decodesDocument(R"( {"x":{"y":[1,{"id":null}],"z":true},"version":2,"records":[]} )"));
    auto broken = split(
        R"(null [] 1 "" {} {"version":1} {"records":[]} {"version":"1","records":[]}
           {"version":null,"records":[]} {"version":1.5,"records":[]} {"version":1,"records":{}}
           {"version":1,"records":null} {"version":1,"records":[null]} {"version":1,"records":[1]}
           {"version":1,"records":[[]]} {"version":1,"records":[{}]} {"version":1,"records":[]}{}
           {"version":1,"records":[],} {"version":1,"records":[]}x)");
    for (const auto& json : {std::string(), std::string(" "), "\xEF\xBB\xBF" + start + "]}",
                             start + "]}" + '\0', nested + std::string(1'000'000, '['),
                             nested + std::string(100, '[') + std::string(100, ']') + "}"})
        broken.push_back(json);
    const auto document = encoded(DictationRecords(GeneratedHistory(3).take()));
    ASSERT_TRUE(decodesDocument(document));
    for (std::size_t size = 0; size < document.size(); ++size)
        broken.push_back(document.substr(0, size));
    for (const auto& json : broken) EXPECT_FALSE(decodesDocument(json)) << json.substr(0, 5'000);

    EXPECT_EQ(HistoryArchive::decode(start + record + "," + record + "]}").records.size(), 2u)
        << "two records may have one id";
}

}  // namespace
}  // namespace quorvi::test
