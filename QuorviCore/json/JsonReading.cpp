#include "QuorviCore/json/JsonReading.h"

#include <rapidjson/memorystream.h>

#include "QuorviCore/text/Text.h"

namespace quorvi::json {

bool parse(rapidjson::Document& document, std::string_view text) {
    // The encoding is checked beforehand, which takes a fraction of the time that the parser's own
    // check does.
    if (!text::isValidUtf8(text)) return false;
    constexpr unsigned flags = rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag;
    rapidjson::MemoryStream stream(text.data(), text.size());
    document.ParseStream<flags>(stream);
    return !document.HasParseError();
}

bool isFreeOfSurrogates(std::string_view s) {
    for (std::size_t at = s.find('\xED'); at != s.npos; at = s.find('\xED', at + 1))
        if (at + 1 < s.size() && static_cast<unsigned char>(s[at + 1]) >= 0xA0) return false;
    return true;
}

}  // namespace quorvi::json
