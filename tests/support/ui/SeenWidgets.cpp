#include "tests/support/ui/SeenWidgets.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <algorithm>

namespace quorvi::test {

QStringList SeenWidgets::lines() const {
    QStringList seen;
    for (const auto* widget : ordered())
        if (auto line = text(*widget); !line.isEmpty())
            seen << (widget->isEnabled() ? line : QStringLiteral("-") + line);
    return seen;
}

QStringList SeenWidgets::clipped() const {
    QStringList found;
    for (const auto* widget : ordered()) {
        const auto line = text(*widget);
        if (line.isEmpty()) continue;
        const auto* label = qobject_cast<const QLabel*>(widget);
        const int needed = label && label->wordWrap() ? label->heightForWidth(label->width())
                                                      : widget->minimumSizeHint().height();
        const int width =
            label && label->wordWrap() ? widestWord(*label) : widget->minimumSizeHint().width();
        if (widget->height() < needed || widget->width() < width)
            found << QStringLiteral("%1 is %2x%3, needs %4x%5")
                         .arg(line)
                         .arg(widget->width())
                         .arg(widget->height())
                         .arg(width)
                         .arg(needed);
        const auto* parent = widget->parentWidget();
        if (parent && !parent->rect().contains(widget->geometry()))
            found << line + QStringLiteral(" stands out of its parent");
    }
    return found;
}

QStringList SeenWidgets::stopsAsRead() const {
    QStringList names;
    for (const auto* widget : ordered())
        if (isStop(*widget)) names << nameOf(*widget);
    return names;
}

QStringList SeenWidgets::stopsOfTab() const {
    QStringList names;
    const QWidget* first = nullptr;
    for (const auto* widget : ordered())
        if (!first && isStop(*widget)) first = widget;
    const auto* at = first;
    while (at) {
        if (isStop(*at) && root_.isAncestorOf(at)) names << nameOf(*at);
        at = at->nextInFocusChain();
        if (at == first) break;
    }
    return names;
}

QString SeenWidgets::nameOf(const QWidget& widget) {
    if (!widget.accessibleName().isEmpty()) return widget.accessibleName();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
    return {};
}

int SeenWidgets::widestWord(const QLabel& label) {
    int widest = 0;
    // A line may end at a space, and at one without width.
    auto text = label.text();
    for (const auto& word : text.replace(QChar(0x200B), QLatin1Char(' ')).split(QLatin1Char(' ')))
        widest = std::max(widest, label.fontMetrics().horizontalAdvance(word));
    return widest;
}

std::vector<const QWidget*> SeenWidgets::ordered() const {
    std::vector<const QWidget*> all;
    collect(root_, all);
    return all;
}

void SeenWidgets::collect(const QWidget& widget, std::vector<const QWidget*>& into) {
    if (!widget.isVisible()) return;
    into.push_back(&widget);
    if (const auto* scrolled = qobject_cast<const QScrollArea*>(&widget)) {
        if (scrolled->widget()) collect(*scrolled->widget(), into);
    } else if (const auto* layout = widget.layout()) {
        collect(*layout, into);
    }
}

void SeenWidgets::collect(const QLayout& layout, std::vector<const QWidget*>& into) {
    for (int i = 0; i < layout.count(); ++i) {
        const auto* item = layout.itemAt(i);
        if (const auto* widget = const_cast<QLayoutItem*>(item)->widget())
            collect(*widget, into);
        else if (const auto* inner = const_cast<QLayoutItem*>(item)->layout())
            collect(*inner, into);
    }
}

QString SeenWidgets::text(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text();
    if (const auto* picker = qobject_cast<const QComboBox*>(&widget))
        return QStringLiteral("<%1: %2>").arg(nameOf(widget), picker->currentText());
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget))
        return QStringLiteral("{%1: %2}").arg(field->placeholderText(), field->displayText());
    if (const auto* field = qobject_cast<const QPlainTextEdit*>(&widget))
        return QStringLiteral("{%1: %2}").arg(field->placeholderText(), field->toPlainText());
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    if (!button || nameOf(widget).isEmpty()) return {};
    const auto& shown = button->text().isEmpty() ? nameOf(widget) : button->text();
    if (button->isCheckable())
        return QStringLiteral("(%1: %2)").arg(shown, button->isChecked() ? "on" : "off");
    return QStringLiteral("[%1]").arg(shown);
}

}  // namespace quorvi::test
