#pragma once

#include <stop_token>
#include <string>

#include "Quorvi/platform/HttpTransport.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Bytes.h"
#include "QuorviCore/transcription/ServiceAddress.h"
#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi {

// Turns a finished recording into text with one request to the speech-to-text service. Holds no
// state of a request, so calls are independent. Main thread; `transport` outlives the client.
class TranscriptionClient {
public:
    static constexpr std::size_t maximumAudioBytes = 23'999'999;

    // `service` is the scheme and authority of the service, such as "https://api.openai.com",
    // without a trailing slash; see serviceAddress(). One that takes no key is sent none.
    TranscriptionClient(HttpTransport& transport, std::string service, bool takesKey = true);

    // Returns the complete request. Throws QuorviError when the key or the audio can't be sent.
    static HttpRequest request(const Bytes& audio, const std::string& apiKey,
                               const TranscriptionOptions& options, const std::string& service,
                               bool takesKey = true);

    // Returns the recognised text. Throws QuorviError with the sentence to show, the transport's
    // own error when no answer came, or Cancelled.
    Task<std::string> transcribe(Bytes audio, std::string apiKey, TranscriptionOptions options,
                                 std::stop_token stop);

    // Opens the connection in advance, while the user is still speaking. Returns at once.
    void openConnection();

private:
    HttpTransport& transport_;
    std::string service_;
    bool takesKey_;
};

}  // namespace quorvi
