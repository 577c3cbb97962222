#include "Quorvi/ui/translations/Translations.h"

#include <QCoreApplication>

// Part of a static library, whose resources the linker leaves out unless asked.
static void useTranslations() {
    Q_INIT_RESOURCE(translations);
}

namespace quorvi {

std::unique_ptr<QTranslator> installTranslation(const QLocale& locale) {
    useTranslations();
    auto translator = std::make_unique<QTranslator>();
    if (locale.language() != QLocale::English &&
        translator->load(locale, QStringLiteral("quorvi"), QStringLiteral("_"),
                         QStringLiteral(":/translations")))
        QCoreApplication::installTranslator(translator.get());
    return translator;
}

}  // namespace quorvi
