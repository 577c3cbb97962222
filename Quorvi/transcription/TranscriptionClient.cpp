#include "Quorvi/transcription/TranscriptionClient.h"

#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/base/Wipe.h"
#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/text/Marks.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/transcription/MultipartBody.h"

namespace quorvi {

namespace {

// Far more than anybody says in three minutes.
constexpr std::size_t longestAnswer = 256 << 10;

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
    bool StartObject() { return !isText && ++depth <= json::greatestDepth; }
    bool EndObject(rapidjson::SizeType) { return depth-- > 0; }
    bool StartArray() { return Default() && ++depth <= json::greatestDepth; }
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

std::optional<std::string> transcriptIn(const Bytes& body) {
    // The parser would take a zero byte for the end of its input.
    if (std::find(body.begin(), body.end(), 0) != body.end()) return std::nullopt;
    rapidjson::MemoryStream bytes(reinterpret_cast<const char*>(body.data()), body.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> input(bytes);
    constexpr unsigned flags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    rapidjson::Reader reader;
    TranscriptReader found;
    if (!reader.Parse<flags>(input, found) || !found.text) return std::nullopt;
    return repaired(*found.text);
}

Message failureSentence(int status) {
    if (status == 401) return say::apiKeyRejected();
    if (status == 403 || status == 404) return say::modelNotAvailable();
    if (status == 413) return say::recordingTooLarge();
    if (status == 429) return say::rateLimited();
    if (status >= 500 && status <= 599) return say::serviceUnavailable();
    return say::transcriptionFailed(status);
}

std::string transcriptOf(const HttpResponse& response) {
    if (response.status == 0) throw QuorviError::message(say::serviceNoResponse());
    if (response.status < 200 || response.status > 299)
        throw QuorviError::message(failureSentence(response.status));
    if (response.body.size() > longestAnswer)
        throw QuorviError::message(say::serviceAnswerTooLarge());
    const auto transcript = transcriptIn(response.body);
    if (!transcript) throw QuorviError::message(say::serviceUnreadable());
    const auto trimmed = text::trimmed(*transcript);
    if (trimmed.empty()) throw QuorviError::message(say::noSpeechRecognized());
    return std::string(trimmed);
}

}  // namespace

TranscriptionClient::TranscriptionClient(HttpTransport& transport, std::string service)
    : transport_(transport), service_(std::move(service)) {}

HttpRequest TranscriptionClient::request(const Bytes& audio, const std::string& apiKey,
                                         const TranscriptionOptions& options,
                                         const std::string& service) {
    if (text::trimmed(apiKey).empty()) throw QuorviError::message(say::addApiKey());
    if (audio.empty() || audio.size() > maximumAudioBytes)
        throw QuorviError::message(say::recordingEmptyOrTooLarge());
    // Room for everything at once: growing the buffer would copy the audio several times.
    constexpr std::size_t framing = 200;
    const auto fields = options.formFields();
    std::size_t size = audio.size() + 2 * framing;
    for (const auto& [name, value] : fields) size += name.size() + value.size() + framing;

    MultipartBody body;
    body.reserve(size);
    for (const auto& [name, value] : fields) body.field(name, value);
    body.audio(audio);
    body.finish();

    HttpRequest request;
    request.method = "POST";
    request.url = service + "/v1/audio/transcriptions";
    // Built in place instead of copied from a list, which would leave a second copy of the key.
    request.headers.reserve(2);
    request.headers.emplace_back("Authorization", "Bearer " + apiKey);
    request.headers.emplace_back("Content-Type",
                                 "multipart/form-data; boundary=" + body.boundary());
    request.body = body.takeData();
    request.longestAnswer = longestAnswer;
    request.timeout = std::chrono::seconds(60);
    return request;
}

Task<std::string> TranscriptionClient::transcribe(Bytes audio, std::string apiKey,
                                                  TranscriptionOptions options,
                                                  std::stop_token stop) {
    struct WipeOnExit {
        std::string& secret;
        ~WipeOnExit() { wipe(secret); }
    } wipeKey{apiKey};
    auto post = request(audio, apiKey, options, service_);
    Bytes().swap(audio);
    auto answer = transport_.send(std::move(post), stop);
    const auto response = co_await answer;
    throwIfStopped(stop);
    co_return transcriptOf(response);
}

void TranscriptionClient::openConnection() {
    transport_.openConnection(service_ + "/");
}

}  // namespace quorvi
