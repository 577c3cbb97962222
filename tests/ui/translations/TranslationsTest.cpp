#include "Quorvi/ui/translations/Translations.h"

#include <QComboBox>
#include <QRegularExpression>
#include <set>

#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/translations/ShownShortcut.h"
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

// The words and signs of another system in a text.
std::string foreignIn(const QString& text) {
    static const QRegularExpression words(
        QStringLiteral("\\bMacs?\\b|macOS|iCloud|Keychain|Apple|[⌘⌥⌃⇧]|menu bar|Finder|\\bDock\\b|"
                       "System Settings|Option\\b|Menüleiste|Systemeinstellungen|Wahltaste|"
                       "Bedienungshilfen|γραμμή μενού|Ρυθμίσεις συστήματος"));
    return words.match(text).hasMatch() ? text.toStdString() : "";
}

// All texts of a window, visible or not.
QStringList textsOf(QWidget& window) {
    QStringList texts;
    const auto all = window.findChildren<QObject*>();
    for (const auto* object : all) {
        for (const auto* name : {"text", "title", "toolTip", "placeholderText", "accessibleName",
                                 "accessibleDescription"})
            texts << object->property(name).toString();
        if (const auto* picker = qobject_cast<const QComboBox*>(object))
            for (int i = 0; i < picker->count(); ++i) texts << picker->itemText(i);
    }
    return texts;
}

class TranslationsTest : public testing::TestWithParam<QLocale::Language> {
protected:
    const InstalledTranslations translations = installTranslation(QLocale(GetParam()));
};

TEST_P(TranslationsTest, EachSentenceIsTranslatedWithItsGapsAndInWordsOfThisDesktop) {
    for (const auto english : sentences::templates) {
        if (english.empty() || english == sentences::english(Sentence::verbatim)) continue;
        const auto found =
            translations.back()->translate("Model", std::string(english).c_str()).toStdString();
        EXPECT_NE(found, "") << english;
        EXPECT_EQ(gapsOf(found), gapsOf(english)) << english;
        EXPECT_EQ(foreignIn(QString::fromStdString(found)), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, TranslationsTest,
                         testing::Values(QLocale::English, QLocale::German, QLocale::Greek),
                         [](const auto& one) {
                             return QLocale::languageToString(one.param).toStdString();
                         });

TEST(ShownShortcutTest, NamesTheKeysAsTheyArePrinted) {
    using namespace modifierFlag;
    const struct {
        QLocale::Language language;
        Hotkey shortcut;
        const char* shown;
        bool hasAltGr = false;
    } rows[] = {
        {QLocale::English, Hotkey::rightOption, "Right Alt"},
        {QLocale::English, Hotkey::rightOption, "Right Alt (AltGr)", true},
        {QLocale::English, Hotkey::commandShiftSpace, "Super+Shift+Space"},
        {QLocale::English, {47, control | option, "⌃⌥."}, "Ctrl+Alt+."},
        {QLocale::French, Hotkey::rightControl, "Right Ctrl"},
        {QLocale::German, Hotkey::f8, "F8"},
        {QLocale::German, {117, control | shift, "⌃⇧Del"}, "Strg+Umschalt+Entf"},
        {QLocale::Greek, {200, option, "⌥Key 200"}, "Alt+Πλήκτρο 200"},
    };
    for (const auto& row : rows) {
        const auto translations = installTranslation(QLocale(row.language));
        setRightAltIsAltGr(row.hasAltGr);
        EXPECT_EQ(quorvi::shown(row.shortcut).toStdString(), row.shown);
        setRightAltIsAltGr(false);
    }
}

// Every text has the room it needs, in every language and on every page.
TEST(WindowTextsTest, NothingIsCutOffOrForeignInAnyLanguage) {
    for (auto language : {QLocale::English, QLocale::German, QLocale::Greek}) {
        const auto translations = installTranslation(QLocale(language));
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
            for (const auto& text : textsOf(*world.window)) EXPECT_EQ(foreignIn(text), "");
        }
    }
}

}  // namespace
}  // namespace quorvi::test
