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
#include "QuorviCore/text/Text.h"
#include "QuorviCore/transcription/MultipartBody.h"

namespace quorvi {

namespace {

// Picks the member "text" out of the outermost object as the parser goes by. Keeping no tree, it
// needs next to no memory for hostile nesting. The parse ends at the first thing that rules the
// answer out.
struct TranscriptReader : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TranscriptReader> {
    std::optional<std::string> text;
    std::size_t depth = 0;
    bool isText = false;  // the value that comes next is the outermost object's "text"

    bool Default() { return depth > 0 && !isText; }
    bool String(const char* s, rapidjson::SizeType length, bool) {
        if (std::exchange(isText, false)) text = std::string(s, length);
        return depth > 0;
    }
    bool Key(const char* s, rapidjson::SizeType length, bool) {
        isText = depth == 1 && std::string_view(s, length) == "text";
        return true;
    }
    bool StartObject() { return !isText && ++depth > 0; }
    bool EndObject(rapidjson::SizeType) { return depth-- > 0; }
    bool StartArray() { return Default() && ++depth > 0; }
    bool EndArray(rapidjson::SizeType) { return depth-- > 0; }
};

std::optional<std::string> transcriptIn(const Bytes& body) {
    // The parser takes a zero byte for the end of its input.
    if (std::find(body.begin(), body.end(), 0) != body.end()) return std::nullopt;
    rapidjson::MemoryStream bytes(reinterpret_cast<const char*>(body.data()), body.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> input(bytes);
    constexpr unsigned flags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    rapidjson::Reader reader;
    TranscriptReader found;
    if (!reader.Parse<flags>(input, found)) return std::nullopt;
    return std::move(found.text);
}

std::string failureSentence(int status) {
    if (status == 401) return "Your API key was rejected. Replace it in Settings.";
    if (status == 403 || status == 404) {
        return "This API project cannot use the selected model. Try GPT-4o Transcribe in Settings.";
    }
    if (status == 413) return "The recording is too large. Try a shorter dictation.";
    if (status == 429) {
        return "The API is rate limited or has no remaining credit. Check your OpenAI API billing "
               "and try again.";
    }
    if (status >= 500 && status <= 599) {
        return "The transcription service is temporarily unavailable. Please try again.";
    }
    return "Transcription failed (HTTP " + std::to_string(status) +
           "). Check your model and try again.";
}

std::string transcriptOf(const HttpResponse& response) {
    if (response.status == 0) {
        throw QuorviError::message("The transcription service returned no response.");
    }
    if (response.status < 200 || response.status > 299) {
        throw QuorviError::message(failureSentence(response.status));
    }
    const auto transcript = transcriptIn(response.body);
    if (!transcript) {
        throw QuorviError::message("The transcription service returned an unreadable result.");
    }
    const auto trimmed = text::trimmed(*transcript);
    if (trimmed.empty()) {
        throw QuorviError::message("No speech was recognized. Try again closer to the microphone.");
    }
    return std::string(trimmed);
}

}  // namespace

TranscriptionClient::TranscriptionClient(HttpTransport& transport, std::string service)
    : transport_(transport), service_(std::move(service)) {}

HttpRequest TranscriptionClient::request(const Bytes& audio, const std::string& apiKey,
                                         const TranscriptionOptions& options,
                                         const std::string& service) {
    if (text::trimmed(apiKey).empty()) {
        throw QuorviError::message("Add your OpenAI API key in Settings.");
    }
    if (audio.empty() || audio.size() > maximumAudioBytes) {
        throw QuorviError::message(
            "This recording is empty or too large. Please record a shorter dictation.");
    }
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
    // Put in place, not copied from a list: no second copy of the key is left behind.
    request.headers.reserve(2);
    request.headers.emplace_back("Authorization", "Bearer " + apiKey);
    request.headers.emplace_back("Content-Type",
                                 "multipart/form-data; boundary=" + body.boundary());
    request.body = body.takeData();
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
