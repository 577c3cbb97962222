#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "QuorviCore/history/DictationRecords.h"

namespace quorvi {

// Thrown if a document or a record cannot be read or written.
class HistoryFormatError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The history as a JSON document. Reading is strict: well-formed UTF-8 without lone surrogates,
// every number in range, every required member present and of its type; a fault anywhere makes the
// whole unreadable. Unknown keys are ignored; of a duplicate key the last value counts.
struct HistoryArchive {
    static constexpr std::int64_t currentVersion = 1;

    std::int64_t version = currentVersion;
    DictationRecords records;  // in the order of the document

    // Throws HistoryFormatError. Accepts any version of the same shape.
    static HistoryArchive decode(std::string document);
};

// Writes the document in pieces, so that it is never in memory as a whole. One thread at a time.
class HistoryArchiveEncoder {
public:
    explicit HistoryArchiveEncoder(DictationRecords records);

    // Returns the next piece, valid until the next call; empty at the end. Throws
    // HistoryFormatError for a number that is not finite.
    std::string_view next();

private:
    enum class Stage { header, records, footer, end };

    DictationRecords records_;
    std::size_t part_ = 0;
    Stage stage_ = Stage::header;
    std::string piece_;
};

// The JSON form of one record in the document and in synchronisation: sorted keys and no white
// space, so that equal records have equal bytes.
std::string encodeRecord(const DictationRecord& record);
void appendEncodedRecord(std::string& out, const DictationRecord& record);
// Throws HistoryFormatError.
DictationRecord decodeRecord(std::string json);

// Decodes many records; they share the texts that many have in common. One thread at a time.
class DictationRecordDecoder {
public:
    // `count` is how many about. The transcripts of very many go into the cold memory.
    explicit DictationRecordDecoder(std::size_t count = 1);
    ~DictationRecordDecoder();
    DictationRecordDecoder(const DictationRecordDecoder&) = delete;
    DictationRecordDecoder& operator=(const DictationRecordDecoder&) = delete;

    // Throws HistoryFormatError; the decoder stays usable.
    DictationRecord decode(std::string_view json);

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace quorvi
