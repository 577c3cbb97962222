#include <cmath>

#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/json/JsonWriting.h"

namespace quorvi {

namespace {

using json::appendNumber;
using json::appendString;

// A piece is written out once it has this size.
constexpr std::size_t pieceSize = 256 * 1024;

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
    std::string out;
    out.reserve(320 + (record.text ? record.text->size() : 0));
    appendRecord(out, record);
    return out;
}

void appendEncodedRecord(std::string& out, const DictationRecord& record) {
    appendRecord(out, record);
}

}  // namespace quorvi
