#include <gtest/gtest.h>

#include <string>

#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi::test {
namespace {

using Fields = std::vector<std::pair<std::string, std::string>>;

std::string prompt(DictationLanguage language, const std::string& vocabulary) {
    for (const auto& [name, value] :
         TranscriptionOptions{language, TranscriptionModel::fourO, vocabulary}.formFields())
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
    const auto hint = [](DictationLanguage language, TranscriptionModel model) {
        std::string all;
        for (const auto& [name, value] : TranscriptionOptions{language, model, ""}.formFields())
            if (name.starts_with("language")) all += name + "=" + value + " ";
        return all;
    };
    using enum DictationLanguage;
    using enum TranscriptionModel;
    EXPECT_EQ(hint(automatic, transcribe), "");
    EXPECT_EQ(hint(greek, transcribe), "languages[]=el ");
    EXPECT_EQ(hint(automatic, fourO) + hint(mixed, fourO), "");
    EXPECT_EQ(hint(english, fourO) + hint(greek, mini), "language=en language=el ");
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

}  // namespace
}  // namespace quorvi::test
