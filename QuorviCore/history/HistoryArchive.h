#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "QuorviCore/history/DictationRecords.h"

namespace quorvi {

// Thrown for what is no history document, or no record.
class HistoryFormatError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The history as a JSON document. It is read strictly: well-formed UTF-8 without lone surrogates,
// every number within its range, nothing required missing or of another type; a fault anywhere
// makes the whole unreadable. Unknown keys are ignored, and of a key that is there twice the last
// value counts.
struct HistoryArchive {
    static constexpr std::int64_t currentVersion = 1;

    std::int64_t version = currentVersion;
    DictationRecords records;  // in the order of the document

    // Throws HistoryFormatError. Any version is read that has the same shape.
    static HistoryArchive decode(std::string document);
};

// Writes the document of the present version piece by piece, so that it need not be in memory as a
// whole. For one thread at a time.
class HistoryArchiveEncoder {
public:
    explicit HistoryArchiveEncoder(DictationRecords records);

    // The next piece, valid until the next call; empty at the end. Throws HistoryFormatError for a
    // record with a number that is not finite.
    std::string_view next();

private:
    enum class Stage { header, records, footer, end };

    DictationRecords records_;
    std::size_t part_ = 0;
    Stage stage_ = Stage::header;
    std::string piece_;
};

// One record in the form that the document and the synchronisation use: keys sorted, no white
// space, so that equal records give identical bytes.
std::string encodeRecord(const DictationRecord& record);
void appendEncodedRecord(std::string& out, const DictationRecord& record);
// Throws HistoryFormatError.
DictationRecord decodeRecord(std::string json);

// Decodes many records, which then share the texts that they have in common. For one thread at a
// time.
class DictationRecordDecoder {
public:
    DictationRecordDecoder();
    ~DictationRecordDecoder();
    DictationRecordDecoder(const DictationRecordDecoder&) = delete;
    DictationRecordDecoder& operator=(const DictationRecordDecoder&) = delete;

    // Throws HistoryFormatError; the next record can be decoded all the same.
    DictationRecord decode(std::string_view json);

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace quorvi
