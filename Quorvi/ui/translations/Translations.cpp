#include "Quorvi/ui/translations/Translations.h"

#include <QCoreApplication>
#include <utility>

// The linker drops the resources of a static library unless they are initialised explicitly.
static void useTranslations() {
    Q_INIT_RESOURCE(translations);
}

namespace quorvi {

namespace {

// An empty translation if there is none for the locale.
std::unique_ptr<QTranslator> load(const QLocale& locale) {
    useTranslations();
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(locale, QStringLiteral("quorvi"), QStringLiteral("_"),
                          QStringLiteral(":/translations")))
        return std::make_unique<QTranslator>();
    return translator;
}

}  // namespace

InstalledTranslations installTranslation(const QLocale& locale) {
    InstalledTranslations installed;
    installed.push_back(load(QLocale(QLocale::English)));
    if (locale.language() != QLocale::English) installed.push_back(load(locale));
    // Qt asks the last one first.
    for (const auto& translator : installed)
        if (!translator->isEmpty()) QCoreApplication::installTranslator(translator.get());
    return installed;
}

const QTranslator& englishTranslation() {
    static const auto english = load(QLocale(QLocale::English));
    return *english;
}

}  // namespace quorvi
