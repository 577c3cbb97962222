#include "Quorvi/transcription/TranscriptionClient.h"

#include <utility>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/base/Wipe.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/transcription/MultipartBody.h"
#include "QuorviCore/transcription/TranscriptionAnswer.h"

namespace quorvi {

namespace {

// Far more than anybody says in three minutes.
constexpr std::size_t longestAnswer = 256 << 10;

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
    const auto transcript = transcriptIn(textOf(response.body));
    if (!transcript) throw QuorviError::message(say::serviceUnreadable());
    const auto trimmed = text::trimmed(*transcript);
    if (trimmed.empty()) throw QuorviError::message(say::noSpeechRecognized());
    return std::string(trimmed);
}

}  // namespace

TranscriptionClient::TranscriptionClient(HttpTransport& transport, std::string service,
                                         bool takesKey)
    : transport_(transport), service_(std::move(service)), takesKey_(takesKey) {}

HttpRequest TranscriptionClient::request(const Bytes& audio, const std::string& apiKey,
                                         const TranscriptionOptions& options,
                                         const std::string& service, bool takesKey) {
    if (takesKey && text::trimmed(apiKey).empty()) throw QuorviError::message(say::addApiKey());
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
    if (takesKey) request.headers.emplace_back("Authorization", "Bearer " + apiKey);
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
    auto post = request(audio, apiKey, options, service_, takesKey_);
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
