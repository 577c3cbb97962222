#include "QuorviCore/transcription/TranscriptionOptions.h"

#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

struct ModelTexts {
    std::string_view raw;
    std::string_view title;
};

constexpr std::array<ModelTexts, allTranscriptionModels.size()> modelTexts{{
    {"gpt-transcribe", "GPT Transcribe · multilingual"},
    {"gpt-4o-transcribe", "GPT-4o Transcribe"},
    {"gpt-4o-mini-transcribe", "GPT-4o Mini Transcribe"},
}};

struct LanguageTexts {
    std::string_view raw;
    std::string_view title;
    std::string_view detail;
    std::string_view context;
};

constexpr std::array<LanguageTexts, allDictationLanguages.size()> languageTexts{{
    {"automatic", "Automatic",
     "Detects the spoken language, including German, English and Greek. Keeps your words in their "
     "original language.",
     ""},
    {"mixed", "English + Ελληνικά",
     "Favors English and Greek, including switching between them. Choose Automatic when speaking "
     "other languages.",
     "The speaker uses English and Greek, sometimes in the same sentence. Preserve each language "
     "as spoken, with Greek in the Greek alphabet."},
    {"english", "English",
     "Favors English speech. Choose Automatic when switching between languages.",
     "English dictation with punctuation."},
    {"greek", "Ελληνικά",
     "Favors Greek speech and preserves the Greek alphabet. Choose Automatic when switching "
     "between languages.",
     "Ελληνική υπαγόρευση με στίξη. Διατήρησε τις ελληνικές λέξεις στο ελληνικό αλφάβητο."},
}};

const ModelTexts& textsOf(TranscriptionModel model) {
    return modelTexts[static_cast<std::size_t>(model)];
}

const LanguageTexts& textsOf(DictationLanguage language) {
    return languageTexts[static_cast<std::size_t>(language)];
}

template <class Case, std::size_t n>
std::optional<Case> caseWithRawValue(const std::array<Case, n>& all, std::string_view raw) {
    for (const auto candidate : all)
        if (textsOf(candidate).raw == raw) return candidate;
    return std::nullopt;
}

}  // namespace

std::string_view rawValue(TranscriptionModel model) {
    return textsOf(model).raw;
}
std::string_view title(TranscriptionModel model) {
    return textsOf(model).title;
}

std::optional<TranscriptionModel> transcriptionModelFromRawValue(std::string_view raw) {
    return caseWithRawValue(allTranscriptionModels, raw);
}

std::string_view rawValue(DictationLanguage language) {
    return textsOf(language).raw;
}
std::string_view title(DictationLanguage language) {
    return textsOf(language).title;
}
std::string_view detail(DictationLanguage language) {
    return textsOf(language).detail;
}
std::string_view context(DictationLanguage language) {
    return textsOf(language).context;
}

std::optional<std::string_view> code(DictationLanguage language) {
    switch (language) {
        case DictationLanguage::english:
            return "en";
        case DictationLanguage::greek:
            return "el";
        case DictationLanguage::automatic:
        case DictationLanguage::mixed:
            break;
    }
    return std::nullopt;
}

std::vector<std::string_view> hints(DictationLanguage language) {
    if (language == DictationLanguage::mixed) return {"en", "el"};
    if (const auto only = code(language)) return {*only};
    return {};
}

std::vector<std::pair<std::string, std::string>> TranscriptionOptions::formFields() const {
    std::vector<std::pair<std::string, std::string>> fields;
    fields.emplace_back("model", otherModel.empty() ? rawValue(model) : otherModel);
    fields.emplace_back("response_format", "json");

    // Only the multilingual model takes several languages.
    if (otherModel.empty() && model == TranscriptionModel::transcribe) {
        for (const auto hint : hints(language)) fields.emplace_back("languages[]", hint);
    } else if (const auto only = code(language)) {
        fields.emplace_back("language", *only);
    }

    std::string prompt(context(language));
    const auto terms = text::trimmed(text::firstCharacters(vocabulary, vocabularyLimit));
    if (!prompt.empty() && !terms.empty()) prompt += '\n';
    prompt += terms;
    if (!prompt.empty()) fields.emplace_back("prompt", std::move(prompt));
    return fields;
}

}  // namespace quorvi
