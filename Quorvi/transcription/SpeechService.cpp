#include "Quorvi/transcription/SpeechService.h"

#include <utility>

#include "Quorvi/transcription/SilentRecording.h"
#include "Quorvi/transcription/TranscriptionClient.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/base/Wipe.h"

namespace quorvi {

SpeechService::SpeechService(Environment environment)
    : environment_(std::move(environment)),
      choice_(environment_.settings, environment_.fixedAddress),
      offline_(environment_.offlineProgram, environment_.scheduler),
      keys_(choice_, offline_, environment_.keys, environment_.otherKeys) {}

void SpeechService::startProgram() {
    if (choice_.kind() == SpeechServiceKind::offline) offline_.prepare();
}

void SpeechService::openConnection() {
    if (choice_.kind() == SpeechServiceKind::offline) return;
    try {
        TranscriptionClient(environment_.transport, choice_.address()).openConnection();
    } catch (const QuorviError&) {
        // The address is not valid; the request says so.
    }
}

Task<SpeechService::Access> SpeechService::access(std::stop_token stop) {
    Access access{choice_.kind(),
                  choice_.isFixed() ? std::string() : choice_.otherModel(),
                  choice_.takesKey(),
                  choice_.address(),
                  {}};
    if (access.kind == SpeechServiceKind::offline) {
        auto starting = offline_.endpoint(std::move(stop));
        auto endpoint = co_await starting;
        access.takesKey = true;
        access.address = std::move(endpoint.address);
        access.key = Secret(std::move(endpoint.token));
    } else {
        auto reading = keys_.read(std::move(stop));
        auto key = co_await reading;
        access.key = Secret(std::move(key));
    }
    co_return access;
}

Task<std::string> SpeechService::transcribe(Task<Bytes> audio, TranscriptionOptions options,
                                            std::stop_token stop) {
    auto reaching = access(stop);
    audio.start();
    reaching.start();
    // First, so that the key is overwritten also when the recording can't be used.
    auto access = co_await reaching;
    auto recording = co_await audio;
    auto asking = ask(std::move(recording), std::move(access), std::move(options), stop);
    co_return co_await asking;
}

Task<void> SpeechService::test(TranscriptionOptions options, std::stop_token stop) {
    auto reaching = access(stop);
    auto access = co_await reaching;
    auto asking = ask(silentRecording(), std::move(access), std::move(options), stop);
    try {
        co_await asking;
    } catch (const QuorviError& error) {
        // Which is right: nothing was said.
        if (!error.sentence().is(Sentence::noSpeechRecognized)) throw;
    }
}

Task<std::string> SpeechService::ask(Bytes audio, Access access, TranscriptionOptions options,
                                     std::stop_token stop) {
    if (access.kind == SpeechServiceKind::other) options.otherModel = std::move(access.model);
    TranscriptionClient client(environment_.transport, std::move(access.address), access.takesKey);
    auto asking = client.transcribe(std::move(audio), std::string(access.key.view()),
                                    std::move(options), std::move(stop));
    auto transcript = co_await asking;
    if (access.kind == SpeechServiceKind::offline) offline_.succeeded();
    co_return transcript;
}

DictationCostEstimate SpeechService::price(TranscriptionModel model) const {
    switch (choice_.kind()) {
        case SpeechServiceKind::openAI:
            return DictationCostEstimate::of(model);
        case SpeechServiceKind::other:
            return DictationCostEstimate::none(choice_.isFixed() || choice_.otherModel().empty()
                                                   ? std::string(rawValue(model))
                                                   : choice_.otherModel());
        case SpeechServiceKind::offline:
            break;
    }
    return DictationCostEstimate::none(DictationCostEstimate::offlineModel);
}

}  // namespace quorvi
