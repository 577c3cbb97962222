#include "Quorvi/ui/translations/Translations.h"

#include <QCoreApplication>

// The linker drops the resources of a static library unless they are initialised explicitly.
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
