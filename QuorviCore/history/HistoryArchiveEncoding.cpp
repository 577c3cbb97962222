#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi {

namespace {

// A piece is written out once it has this size.
constexpr std::size_t pieceSize = 256 * 1024;

// A bit pattern with the top bit of each byte set that is below 0x20, a quotation mark or a
// backslash; bits above the lowest such byte may be set wrongly.
std::uint64_t bytesToEscape(std::uint64_t bytes) {
    constexpr std::uint64_t ones = 0x0101010101010101U;
    constexpr std::uint64_t tops = 0x8080808080808080U;
    const std::uint64_t quotes = bytes ^ (ones * '"');
    const std::uint64_t backslashes = bytes ^ (ones * '\\');
    return (((bytes - ones * 0x20) & ~bytes) | ((quotes - ones) & ~quotes) |
            ((backslashes - ones) & ~backslashes)) &
           tops;
}

bool needsEscape(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

// Number of leading bytes that stand for themselves.
std::size_t plainPrefix(std::string_view s) {
    std::size_t i = 0;
    while (i + 8 <= s.size() && bytesToEscape(text::eightBytes(s.data() + i)) == 0) i += 8;
    while (i < s.size() && !needsEscape(s[i])) ++i;
    return i;
}

void appendEscape(std::string& out, char c) {
    switch (c) {
        case '"':
            out += "\\\"";
            return;
        case '\\':
            out += "\\\\";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case '\t':
            out += "\\t";
            return;
        default:
            break;
    }
    constexpr char digits[] = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(c);
    out += "\\u00";
    out += digits[value >> 4];
    out += digits[value & 0x0F];
}

void appendString(std::string& out, std::string_view s) {
    if (!text::isValidUtf8(s)) return appendString(out, text::wellFormed(s));
    out += '"';
    for (;;) {
        const std::size_t plain = plainPrefix(s);
        out += s.substr(0, plain);
        if (plain == s.size()) break;
        appendEscape(out, s[plain]);
        s.remove_prefix(plain + 1);
    }
    out += '"';
}

// The shortest digits that read back as the same number.
template <class Number>
void appendNumber(std::string& out, Number value) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    out.append(digits.data(), end);
}

void appendFinite(std::string& out, double value) {
    if (!std::isfinite(value)) throw HistoryFormatError("a number of a record is not finite");
    appendNumber(out, value);
}

void appendRecord(std::string& out, const DictationRecord& record) {
    out += R"({"appName":)";
    appendString(out, record.appName);
    out += R"(,"audioSeconds":)";
    appendFinite(out, record.audioSeconds);
    if (const auto& estimate = record.costEstimate) {
        out += R"(,"costEstimate":{"modelID":)";
        appendString(out, estimate->modelID);
        out += R"(,"pricingDate":)";
        appendString(out, estimate->pricingDate);
        out += R"(,"usdPerMinute":)";
        appendFinite(out, estimate->usdPerMinute);
        out += '}';
    }
    out += R"(,"date":)";
    appendFinite(out, record.date.secondsSinceReferenceDate);
    out += R"(,"id":")";
    const auto id = record.id.characters();
    out.append(id.data(), id.size());
    out += R"(","language":)";
    appendString(out, record.language);
    if (record.text) {
        out += R"(,"text":)";
        appendString(out, *record.text);
    }
    out += R"(,"wordCount":)";
    appendNumber(out, record.wordCount);
    out += '}';
}

}  // namespace

HistoryArchiveEncoder::HistoryArchiveEncoder(DictationRecords records)
    : records_(std::move(records)) {}

std::string_view HistoryArchiveEncoder::next() {
    piece_.clear();
    if (stage_ == Stage::header) {
        piece_ += R"({"records":[)";
        stage_ = Stage::records;
    }
    const auto& parts = records_.parts();
    while (stage_ == Stage::records && piece_.size() < pieceSize) {
        if (part_ == parts.size()) {
            stage_ = Stage::footer;
            break;
        }
        for (const auto& record : parts[part_].chunk->records) {
            if (piece_.empty() || piece_.back() != '[') piece_ += ',';
            appendRecord(piece_, record);
        }
        ++part_;
    }
    if (stage_ == Stage::footer) {
        piece_ += R"(],"version":)";
        appendNumber(piece_, HistoryArchive::currentVersion);
        piece_ += '}';
        stage_ = Stage::end;
    }
    return piece_;
}

std::string encodeRecord(const DictationRecord& record) {
    std::string json;
    appendRecord(json, record);
    return json;
}

}  // namespace quorvi
