#include "QuorviCore/transcription/SpeechServiceKind.h"

namespace quorvi {

std::string_view rawValue(SpeechServiceKind kind) {
    switch (kind) {
        case SpeechServiceKind::openAI:
            return "openai";
        case SpeechServiceKind::other:
            return "other";
        case SpeechServiceKind::offline:
            return "offline";
    }
    return {};
}

std::optional<SpeechServiceKind> speechServiceKindFromRawValue(std::string_view raw) {
    for (const auto kind : allSpeechServiceKinds)
        if (rawValue(kind) == raw) return kind;
    return std::nullopt;
}

}  // namespace quorvi
