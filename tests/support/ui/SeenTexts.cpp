#include "tests/support/ui/SeenTexts.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <vector>

namespace quorvi::test {

std::string seen(const QWidget& root) {
    struct Text {
        QPoint middle;
        int left;
        QString text;
    };
    QCoreApplication::processEvents();  // layouts are done in the loop
    std::vector<Text> texts;
    for (const auto* widget : root.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&root) || widget->size().isEmpty()) continue;
        QString text;
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            text = label->text();
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            text = button->text().isEmpty() ? button->accessibleName() : button->text();
            if (!text.isEmpty())
                text = (button->isEnabled() ? QStringLiteral("[%1]") : QStringLiteral("(%1)"))
                           .arg(text);
        } else if (const auto* choice = qobject_cast<const QComboBox*>(widget)) {
            text = QStringLiteral("‹%1›").arg(choice->currentText());
        } else if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
            text = QStringLiteral("_%1_").arg(field->text().isEmpty() ? field->placeholderText()
                                                                      : field->text());
        }
        if (text.isEmpty()) continue;
        const auto place = QRect(widget->mapTo(&root, QPoint(0, 0)), widget->size());
        texts.push_back({place.center(), place.left(), text});
    }
    std::ranges::stable_sort(texts, {}, [](const Text& text) { return text.middle.y(); });
    constexpr int oneLine = 6;
    for (auto first = texts.begin(); first != texts.end();) {
        auto end = first;
        while (end != texts.end() && end->middle.y() - first->middle.y() <= oneLine) ++end;
        std::stable_sort(first, end, [](const auto& a, const auto& b) { return a.left < b.left; });
        first = end;
    }
    QStringList all;
    for (const auto& text : texts) all << text.text;
    return all.join(QStringLiteral(" | ")).toStdString();
}

}  // namespace quorvi::test
