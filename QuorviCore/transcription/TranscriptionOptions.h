#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvi {

// A speech-to-text model. The raw value is sent to the service, stored and priced.
enum class TranscriptionModel { transcribe, fourO, mini };

inline constexpr std::array allTranscriptionModels{
    TranscriptionModel::transcribe, TranscriptionModel::fourO, TranscriptionModel::mini};

std::string_view rawValue(TranscriptionModel model);
std::string_view title(TranscriptionModel model);
std::optional<TranscriptionModel> transcriptionModelFromRawValue(std::string_view raw);

enum class DictationLanguage { automatic, mixed, english, greek };

inline constexpr std::array allDictationLanguages{
    DictationLanguage::automatic, DictationLanguage::mixed, DictationLanguage::english,
    DictationLanguage::greek};

std::string_view rawValue(DictationLanguage language);
std::string_view title(DictationLanguage language);
std::string_view detail(DictationLanguage language);
std::optional<std::string_view> code(DictationLanguage language);  // ISO 639-1
std::vector<std::string_view> hints(DictationLanguage language);   // ISO 639-1, in order
std::string_view context(DictationLanguage language);              // fixed prompt text, or empty

// How one recording is to be transcribed.
struct TranscriptionOptions {
    // User-perceived characters of the vocabulary that are used.
    static constexpr std::size_t vocabularyLimit = 1200;

    DictationLanguage language;
    TranscriptionModel model;
    std::string vocabulary;    // free text of the user, may be empty or hold several lines
    std::string otherModel{};  // asked for in place of `model`, by a service that has its own

    // The form fields that depend on the options, in the order they are sent: the model, the
    // response format, the language or its hints, and the prompt when there is one.
    std::vector<std::pair<std::string, std::string>> formFields() const;

    bool operator==(const TranscriptionOptions&) const = default;
};

}  // namespace quorvi
