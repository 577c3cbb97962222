#include "Quorvi/ui/translations/ShownMessage.h"

#include <QCoreApplication>
#include <string>

#include "Quorvi/ui/translations/Translations.h"
#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

QString translated(std::string_view template_) {
    return QCoreApplication::translate("Model", std::string(template_).c_str());
}

}  // namespace

QString shown(const Message& message) {
    return QString::fromStdString(message.text(
        [](Sentence sentence) { return translated(sentences::english(sentence)).toStdString(); }));
}

std::string shownInEnglish(const Message& message) {
    return message.text([](Sentence sentence) {
        const std::string words(sentences::english(sentence));
        const auto found = englishTranslation().translate("Model", words.c_str());
        return found.isEmpty() ? words : found.toStdString();
    });
}

std::string shownInEnglish(const std::exception& error) {
    return shownInEnglish(messageOf(error));
}

}  // namespace quorvi
