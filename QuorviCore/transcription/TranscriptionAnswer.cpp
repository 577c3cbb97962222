#include "QuorviCore/transcription/TranscriptionAnswer.h"

#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <utility>

#include "QuorviCore/base/Nesting.h"
#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/text/Marks.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

// Takes the member "text" of the outermost object while parsing. Keeps no tree, so hostile nesting
// costs no memory. The parse ends at the first token that makes the answer invalid.
struct TranscriptReader : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TranscriptReader> {
    std::optional<std::string> text;
    std::size_t depth = 0;
    bool isText = false;  // the next value is the outermost object's "text"

    bool Default() { return depth > 0 && !isText; }
    bool String(const char* s, rapidjson::SizeType length, bool) {
        if (std::exchange(isText, false)) text = std::string(s, length);
        return depth > 0;
    }
    bool Key(const char* s, rapidjson::SizeType length, bool) {
        isText = depth == 1 && std::string_view(s, length) == "text";
        return true;
    }
    bool StartObject() { return !isText && ++depth <= greatestDepth; }
    bool EndObject(rapidjson::SizeType) { return depth-- > 0; }
    bool StartArray() { return Default() && ++depth <= greatestDepth; }
    bool EndArray(rapidjson::SizeType) { return depth-- > 0; }
};

// What is pasted, kept and shown is one and the same text: many programs cut a text at a NUL, and
// refuse one with a lone surrogate, which the parser accepts. Marks without end would hold whoever
// compares it.
std::string repaired(std::string_view transcript) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    auto text = text::withoutExcessMarks(text::wellFormed(transcript));
    for (auto at = text.find('\0'); at != text.npos; at = text.find('\0', at))
        text.replace(at, 1, replacement);
    return text;
}

}  // namespace

std::optional<std::string> transcriptIn(std::string_view body) {
    // The parser would take a zero byte for the end of its input.
    if (body.find('\0') != body.npos) return std::nullopt;
    rapidjson::MemoryStream bytes(body.data(), body.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> input(bytes);
    constexpr unsigned flags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    rapidjson::Reader reader;
    TranscriptReader found;
    if (!reader.Parse<flags>(input, found) || !found.text) return std::nullopt;
    return repaired(*found.text);
}

}  // namespace quorvi
