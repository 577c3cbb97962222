#pragma once

#include <QLocale>
#include <QTranslator>
#include <memory>

namespace quorvi {

// Installs the translation for a locale for the lifetime of the returned object. Texts stay English
// if there is none. Main thread; before the first widget.
std::unique_ptr<QTranslator> installTranslation(const QLocale& locale);

}  // namespace quorvi
