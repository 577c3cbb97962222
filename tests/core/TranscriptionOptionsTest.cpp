#include <gtest/gtest.h>

#include <string>

#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi {
namespace {

using Fields = std::vector<std::pair<std::string, std::string>>;

// The fields that follow the model and the response format.
Fields optionalFields(DictationLanguage language, TranscriptionModel model,
                      const std::string& vocabulary) {
    auto fields = TranscriptionOptions{language, model, vocabulary}.formFields();
    EXPECT_GE(fields.size(), 2u);
    fields.erase(fields.begin(), fields.begin() + 2);
    return fields;
}

std::string prompt(DictationLanguage language, const std::string& vocabulary) {
    for (const auto& [name, value] :
         optionalFields(language, TranscriptionModel::fourO, vocabulary))
        if (name == "prompt") return value;
    return "(none)";
}

std::string repeated(const std::string& s, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += s;
    return all;
}

TEST(TranscriptionOptions, EveryFieldHasItsPlaceInTheForm) {
    const auto fields =
        TranscriptionOptions{DictationLanguage::mixed, TranscriptionModel::transcribe, " kinase\n"}
            .formFields();
    const Fields expected{
        {"model", "gpt-transcribe"},
        {"response_format", "json"},
        {"languages[]", "en"},
        {"languages[]", "el"},
        {"prompt",
         "The speaker uses English and Greek, sometimes in the same sentence. Preserve each "
         "language as spoken, with Greek in the Greek alphabet.\nkinase"}};
    EXPECT_EQ(fields, expected);
}

TEST(TranscriptionOptions, LanguageIsHintedOnlyAsTheModelUnderstandsIt) {
    using enum DictationLanguage;
    using enum TranscriptionModel;
    const struct {
        const char* name;
        DictationLanguage language;
        TranscriptionModel model;
        Fields expected;
    } rows[] = {
        {"transcribe, automatic", automatic, transcribe, {}},
        {"transcribe, greek", greek, transcribe, {{"languages[]", "el"}}},
        {"4o, automatic", automatic, fourO, {}},
        {"4o, mixed", mixed, fourO, {}},
        {"4o, english", english, fourO, {{"language", "en"}}},
        {"mini, greek", greek, mini, {{"language", "el"}}},
    };
    for (const auto& row : rows) {
        auto fields = optionalFields(row.language, row.model, "");
        std::erase_if(fields, [](const auto& field) { return field.first == "prompt"; });
        EXPECT_EQ(fields, row.expected) << row.name;
    }
}

TEST(TranscriptionOptions, PromptJoinsTheContextAndTheTrimmedVocabulary) {
    using enum DictationLanguage;
    EXPECT_EQ(prompt(automatic, "  kinase, ribosome\n"), "kinase, ribosome");
    EXPECT_EQ(prompt(automatic, " \n\t\u00a0\u2028"), "(none)");
    EXPECT_EQ(prompt(english, ""), "English dictation with punctuation.");
    EXPECT_EQ(prompt(english, "one\n\ntwo "), "English dictation with punctuation.\none\n\ntwo");
}

TEST(TranscriptionOptions, VocabularyIsCutByPerceivedCharactersBeforeItIsTrimmed) {
    using enum DictationLanguage;
    EXPECT_EQ(prompt(automatic, std::string(1300, 'a')), std::string(1200, 'a'));
    EXPECT_EQ(prompt(automatic, std::string(1190, 'a') + std::string(10, ' ') + "lost"),
              std::string(1190, 'a'));
    // Leading space counts towards the limit.
    EXPECT_EQ(prompt(automatic, "  " + std::string(1300, 'a')), std::string(1198, 'a'));
    // A letter with a combining accent, and a family of four, are one character each.
    const std::string accented = "e\u0301";
    const std::string family = "👨‍👩‍👧‍👦";
    EXPECT_EQ(prompt(automatic, repeated(accented, 1300)), repeated(accented, 1200));
    EXPECT_EQ(prompt(automatic, repeated(family, 1201)), repeated(family, 1200));
}

TEST(TranscriptionOptions, RawValuesAreMatchedExactly) {
    for (const auto model : allTranscriptionModels)
        EXPECT_EQ(transcriptionModelFromRawValue(rawValue(model)), model);
    for (const auto language : allDictationLanguages)
        EXPECT_EQ(dictationLanguageFromRawValue(rawValue(language)), language);
    EXPECT_EQ(transcriptionModelFromRawValue("GPT-4o-transcribe"), std::nullopt);
    EXPECT_EQ(transcriptionModelFromRawValue(""), std::nullopt);
    EXPECT_EQ(dictationLanguageFromRawValue("english "), std::nullopt);
    EXPECT_EQ(rawValue(TranscriptionModel::mini), "gpt-4o-mini-transcribe");
}

}  // namespace
}  // namespace quorvi
