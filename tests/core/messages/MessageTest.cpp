#include "QuorviCore/messages/Message.h"

#include <gtest/gtest.h>

namespace quorvi::test {
namespace {

template <class Maker, class... Arguments>
concept takes = requires(const Maker& maker, Arguments... arguments) { maker(arguments...); };
static_assert(!takes<decltype(say::noRecording), std::string>);
static_assert(!takes<decltype(say::dictatingInto)>);
static_assert(!takes<decltype(say::updateNeedsNewerSystem), std::string>);

// Only words that come from outside are shown as they are.
template <class Words>
concept isVerbatim = requires(const Words& words) { say::verbatim(words); };
static_assert(isVerbatim<std::string> && !isVerbatim<char[6]>);

TEST(Message, FillsNamedGapsWithWordsAndTranslatedSentences) {
    const auto translated = [](const Message& message, const std::string& translation) {
        return message.text([&](Sentence sentence) {
            return sentence == Sentence::yourApp ? "seine App" : translation;
        });
    };
    const auto newer = say::updateNeedsNewerSystem("2.0", 12);
    EXPECT_EQ(translated(newer, "{system}: {version} {system}"), "12: 2.0 12");
    EXPECT_EQ(translated(newer, "{other}, no gap"), ", no gap");
    EXPECT_EQ(translated(say::dictatingInto(Sentence::yourApp), "In {app}"), "In seine App");
    const std::string braces = "{app} {} {x} }{";
    EXPECT_EQ(say::dictatingInto(braces).english(), "Dictating into " + braces);
    EXPECT_EQ(translated(say::verbatim(braces), "translated"), braces);
}

}  // namespace
}  // namespace quorvi::test
