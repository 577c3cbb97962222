#include "QuorviCore/messages/Message.h"

#include <gtest/gtest.h>

#include <set>

namespace quorvi::test {
namespace {

template <class Maker, class... Arguments>
concept takes = requires(const Maker& maker, Arguments... arguments) {
    maker(arguments...);
};
static_assert(!takes<decltype(say::noRecording), std::string>);
static_assert(!takes<decltype(say::dictatingInto)>);
static_assert(!takes<decltype(say::updateNeedsNewerSystem), std::string>);

// Only words that come from outside are shown as they are.
template <class Words>
concept isVerbatim = requires(const Words& words) {
    say::verbatim(words);
};
static_assert(isVerbatim<std::string> && !isVerbatim<char[6]>);

TEST(Message, FillsGapsByNameInTheOrderOfTheTranslation) {
    const auto message = say::updateNeedsNewerSystem("2.0", 12);
    EXPECT_EQ(message.english(),
              "Quorvi 2.0 is available, but it needs version 12 of your system or a later one.");
    const auto translated = [&](const std::string& translation) {
        return message.text([&](Sentence) { return translation; });
    };
    EXPECT_EQ(translated("{system}: {version} {system}"), "12: 2.0 12");
    EXPECT_EQ(translated("{version}"), "2.0");
    EXPECT_EQ(translated("{other}, no gap"), ", no gap");
}

TEST(Message, ShowsWordsAsTheyAreAndTranslatesSentences) {
    const std::string braces = "{app} {} {x} }{";
    EXPECT_EQ(say::dictatingInto(braces).english(), "Dictating into " + braces);
    EXPECT_EQ(say::verbatim(braces).text([](Sentence) { return "translated"; }), braces);
    EXPECT_EQ(say::dictatingInto(Sentence::yourApp).english(), "Dictating into your app");
    EXPECT_EQ(say::dictatingInto(Sentence::yourApp).text([](Sentence sentence) {
        return sentence == Sentence::yourApp ? "seine App" : "In {app}";
    }),
              "In seine App");
    EXPECT_EQ(Message().english(), "");
    EXPECT_TRUE(Message().isEmpty());
    EXPECT_NE(say::dictatingInto("a"), say::dictatingInto("b"));
}

TEST(Catalogue, EachTemplateHasNamedGapsAndIsThereOnce) {
    std::set<std::string_view> all;
    for (const auto text : sentences::templates) {
        EXPECT_TRUE(all.insert(text).second) << text;
        std::set<std::string_view> names;
        for (auto gap = sentences::nextGap(text, 0); gap.position != text.npos;
             gap = sentences::nextGap(text, gap.position + 1)) {
            EXPECT_NE(text.find('}', gap.position), text.npos) << text;
            EXPECT_FALSE(gap.name.empty()) << text;
            EXPECT_TRUE(names.insert(gap.name).second) << "a gap is filled once: " << text;
        }
    }
}

}  // namespace
}  // namespace quorvi::test
