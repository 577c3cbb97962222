#include "Quorvi/ui/translations/ShownMessage.h"

#include <QCoreApplication>
#include <string>

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

}  // namespace quorvi
