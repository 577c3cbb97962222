#pragma once

#include <memory>
#include <stop_token>
#include <string>

#include "Quorvi/platform/HttpTransport.h"
#include "Quorvi/transcription/OfflineRecogniser.h"
#include "Quorvi/transcription/ServiceKeyStore.h"
#include "Quorvi/transcription/SpeechServiceChoice.h"
#include "QuorviCore/history/DictationCostEstimate.h"
#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi {

// The speech service of the next dictation, whichever it is: what the user chose, its key, and the
// program behind the offline one. A change of the choice counts from the next dictation on. Main
// thread; owned by the controller.
class SpeechService {
public:
    // Everything outlives this object.
    struct Environment {
        Settings& settings;
        Scheduler& scheduler;
        HttpTransport& transport;
        KeyStore& keys;                      // the main key
        ServiceKeyStore::Factory otherKeys;  // may be empty
        ServiceProgram* offlineProgram;      // may be null
        std::string fixedAddress;            // see SpeechServiceChoice
    };

    explicit SpeechService(Environment environment);

    SpeechServiceChoice& choice() { return choice_; }
    const SpeechServiceChoice& choice() const { return choice_; }
    KeyStore& keys() { return keys_; }
    bool hasOffline() const { return offline_.isInstalled(); }

    // Make the service ready while the user is still speaking: the program of the offline one, or
    // the connection to another, which is told thereby that something will be sent. Return at once;
    // a failure shows in the request.
    void startProgram();
    void openConnection();

    // Returns the text of a recording; see TranscriptionClient::transcribe(). `audio` is awaited
    // beside the key, or the start of the program.
    Task<std::string> transcribe(Task<Bytes> audio, TranscriptionOptions options,
                                 std::stop_token stop);

    // Has half a second of silence transcribed, and returns if the service accepts it; otherwise
    // throws as transcribe() does.
    Task<void> test(TranscriptionOptions options, std::stop_token stop);

    // What a dictation that begins now costs there.
    DictationCostEstimate price(TranscriptionModel model) const;

    // Ends what runs for the service.
    void close() { offline_.end(); }

private:
    // How one request reaches the service.
    struct Access {
        SpeechServiceKind kind;
        std::string model;  // of another service
        bool takesKey;
        std::string address;
        Secret key;
    };
    Task<Access> access(std::stop_token stop);
    Task<std::string> ask(Bytes audio, Access access, TranscriptionOptions options,
                          std::stop_token stop);

    Environment environment_;
    SpeechServiceChoice choice_;
    OfflineRecogniser offline_;
    ServiceKeyStore keys_;
};

}  // namespace quorvi
