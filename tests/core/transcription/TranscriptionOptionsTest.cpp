#include <gtest/gtest.h>

#include <string>

#include "QuorviCore/transcription/TranscriptionOptions.h"
#include "tests/support/Texts.h"

namespace quorvi::test {
namespace {

std::string prompt(DictationLanguage language, const std::string& vocabulary) {
    for (const auto& [name, value] :
         TranscriptionOptions{language, TranscriptionModel::fourO, vocabulary}.formFields())
        if (name == "prompt") return value;
    return "(none)";
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
    EXPECT_EQ(hint(mixed, transcribe), "languages[]=en languages[]=el ");
    EXPECT_EQ(hint(automatic, fourO) + hint(mixed, fourO), "");
    EXPECT_EQ(hint(english, fourO) + hint(greek, mini), "language=en language=el ");
}

TEST(TranscriptionOptions, PromptJoinsTheContextAndTheTrimmedVocabulary) {
    using enum DictationLanguage;
    EXPECT_EQ(prompt(automatic, "  kinase, ribosome\n"), "kinase, ribosome");
    EXPECT_EQ(prompt(automatic, " \n\t\u00a0\u2028"), "(none)");
    EXPECT_TRUE(prompt(mixed, " kinase\n").ends_with(" in the Greek alphabet.\nkinase"));
    EXPECT_EQ(prompt(english, "one\n\ntwo "), "English dictation with punctuation.\none\n\ntwo");
    // Leading space counts towards the limit.
    EXPECT_EQ(prompt(automatic, "  " + std::string(1300, 'a')), std::string(1198, 'a'));
}

}  // namespace
}  // namespace quorvi::test
