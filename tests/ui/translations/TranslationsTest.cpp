#include "Quorvi/ui/translations/Translations.h"

#include <set>

#include "Quorvi/ui/translations/ShownMessage.h"
#include "tests/ui/WindowTest.h"

namespace quorvi::test {
namespace {

std::set<std::string> gapsOf(std::string_view text) {
    std::set<std::string> names;
    for (auto gap = sentences::nextGap(text, 0); gap.position != text.npos;
         gap = sentences::nextGap(text, gap.position + 1))
        names.emplace(gap.name);
    return names;
}

class TranslationsTest : public testing::TestWithParam<QLocale::Language> {
protected:
    const std::unique_ptr<QTranslator> translation = installTranslation(QLocale(GetParam()));
};

TEST_P(TranslationsTest, EachSentenceIsTranslatedWithItsGaps) {
    for (const auto english : sentences::templates) {
        if (english.empty() || english == sentences::english(Sentence::verbatim)) continue;
        const auto found =
            translation->translate("Model", std::string(english).c_str()).toStdString();
        EXPECT_NE(found, "") << english;
        EXPECT_EQ(gapsOf(found), gapsOf(english)) << english;
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, TranslationsTest,
                         testing::Values(QLocale::German, QLocale::Greek), [](const auto& one) {
                             return QLocale::languageToString(one.param).toStdString();
                         });

// Every text has the room it needs, in every language and on every page.
TEST(LayoutTest, NothingIsCutOffInAnyLanguage) {
    for (auto language : {QLocale::English, QLocale::German, QLocale::Greek}) {
        const auto translation = installTranslation(QLocale(language));
        WindowWorld world;
        world.withdrawEverything();
        world.dictate("hello");
        world.corrections.save({.original = std::string(150, 'W'), .replacement = "x"});
        for (const auto page : allWindowPages) {
            world.model.setSelectedPage(page);
            for (const QSize size : {QSize(940, 800), QSize(900, 740)}) {
                world.show().resize(size);
                world.settle();
                EXPECT_EQ(Seen(*world.window).clipped().join(QLatin1Char('\n')).toStdString(), "");
            }
        }
    }
}

}  // namespace
}  // namespace quorvi::test
