#pragma once

#include <QLocale>
#include <QTranslator>
#include <memory>
#include <vector>

namespace quorvi {

using InstalledTranslations = std::vector<std::unique_ptr<QTranslator>>;

// Installs the translation for a locale over the English one, for the lifetime of the returned
// object. The texts in the code are the model's own words, so English is a translation, too: it
// names the keys and the places of a Linux desktop, and is what a locale without a translation
// gets. Main thread; before the first widget.
[[nodiscard]] InstalledTranslations installTranslation(const QLocale& locale);

// The English translation by itself, for what is English in every locale: the commands and the log.
// Main thread; needs no application object.
const QTranslator& englishTranslation();

}  // namespace quorvi
