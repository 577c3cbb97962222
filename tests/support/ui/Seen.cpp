#include "tests/support/ui/Seen.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QTextBrowser>
#include <algorithm>

namespace quorvi::test {

namespace {

QString nameOf(const QWidget& widget) {
    if (!widget.accessibleName().isEmpty()) return widget.accessibleName();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
    return {};
}

QString textOf(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text();
    if (const auto* picker = qobject_cast<const QComboBox*>(&widget))
        return QStringLiteral("<%1: %2>").arg(nameOf(widget), picker->currentText());
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget))
        return QStringLiteral("{%1: %2}").arg(field->placeholderText(), field->displayText());
    if (const auto* field = qobject_cast<const QPlainTextEdit*>(&widget))
        return QStringLiteral("{%1: %2}").arg(field->placeholderText(), field->toPlainText());
    if (const auto* notes = qobject_cast<const QTextBrowser*>(&widget)) return notes->toPlainText();
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    if (!button || nameOf(widget).isEmpty()) return {};
    const auto& shown = button->text().isEmpty() ? nameOf(widget) : button->text();
    if (button->isCheckable())
        return QStringLiteral("(%1: %2)").arg(shown, button->isChecked() ? "on" : "off");
    return QStringLiteral("[%1]").arg(shown);
}

void collect(QWidget& widget, std::vector<QWidget*>& into);

void collect(QLayout& layout, std::vector<QWidget*>& into) {
    for (int i = 0; i < layout.count(); ++i) {
        if (auto* widget = layout.itemAt(i)->widget())
            collect(*widget, into);
        else if (auto* inner = layout.itemAt(i)->layout())
            collect(*inner, into);
    }
}

// Children without a layout: by lines, and then from left to right. Those whose middles are a few
// pixels apart are on one line.
void collectByPlace(const QWidget& parent, std::vector<QWidget*>& into) {
    constexpr int oneLine = 6;
    auto children = parent.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    std::ranges::stable_sort(children, {}, [](auto* one) { return one->geometry().center().y(); });
    for (auto first = children.begin(); first != children.end();) {
        const int middle = (*first)->geometry().center().y();
        const auto end = std::find_if(first, children.end(), [&](auto* one) {
            return one->geometry().center().y() - middle > oneLine;
        });
        std::stable_sort(first, end, [](auto* a, auto* b) { return a->x() < b->x(); });
        first = end;
    }
    for (auto* child : children)
        if (!child->isWindow() && !child->size().isEmpty()) collect(*child, into);
}

// In reading order, which is that of the layouts.
void collect(QWidget& widget, std::vector<QWidget*>& into) {
    if (!widget.isVisible()) return;
    into.push_back(&widget);
    if (!textOf(widget).isEmpty()) return;
    if (const auto* scrolled = qobject_cast<const QScrollArea*>(&widget)) {
        if (scrolled->widget()) collect(*scrolled->widget(), into);
    } else if (widget.layout()) {
        collect(*widget.layout(), into);
    } else {
        collectByPlace(widget, into);
    }
}

int widestWord(const QLabel& label) {
    int widest = 0;
    // A line may end at a space, and at one without width.
    auto text = label.text();
    for (const auto& word : text.replace(QChar(0x200B), QLatin1Char(' ')).split(QLatin1Char(' ')))
        widest = std::max(widest, label.fontMetrics().horizontalAdvance(word));
    return widest;
}

bool isStop(const QWidget& widget) {
    return widget.isVisible() && widget.isEnabled() && !widget.focusProxy() &&
           widget.focusPolicy() & Qt::TabFocus && !widget.inherits("QScrollBar");
}

}  // namespace

Seen::Seen(QWidget& root) : root_(root) {
    QCoreApplication::processEvents();
    collect(root, order_);
}

QStringList Seen::lines() const {
    QStringList seen;
    for (const auto* widget : order_)
        if (const auto line = textOf(*widget); !line.isEmpty())
            seen << (widget->isEnabled() ? line : QStringLiteral("-") + line);
    return seen;
}

std::string Seen::text() const {
    return lines().join(QStringLiteral(" | ")).toStdString();
}

QStringList Seen::clipped() const {
    QStringList found;
    for (const auto* widget : order_) {
        const auto line = textOf(*widget);
        if (line.isEmpty()) continue;
        const auto* label = qobject_cast<const QLabel*>(widget);
        const bool wraps = label && label->wordWrap();
        const QSize needed = wraps
                                 ? QSize(widestWord(*label), label->heightForWidth(label->width()))
                                 : widget->minimumSizeHint();
        if (widget->height() < needed.height() || widget->width() < needed.width())
            found << QStringLiteral("%1 is %2x%3, needs %4x%5")
                         .arg(line)
                         .arg(widget->width())
                         .arg(widget->height())
                         .arg(needed.width())
                         .arg(needed.height());
        const auto* parent = widget->parentWidget();
        if (parent && !parent->rect().contains(widget->geometry()))
            found << line + QStringLiteral(" is outside of its parent");
    }
    return found;
}

QStringList Seen::stopsAsRead() const {
    QStringList names;
    for (const auto* widget : order_)
        if (isStop(*widget)) names << nameOf(*widget);
    return names;
}

QStringList Seen::stopsOfTab() const {
    QStringList names;
    const auto first = std::ranges::find_if(order_, [](auto* widget) { return isStop(*widget); });
    if (first == order_.end()) return names;
    const QWidget* at = *first;
    do {
        if (isStop(*at) && root_.isAncestorOf(at)) names << nameOf(*at);
        at = at->nextInFocusChain();
    } while (at != *first);
    return names;
}

bool Seen::isNamed(const QWidget& widget, const char* name) {
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const auto wanted = QString::fromUtf8(name);
    return nameOf(widget) == wanted || (button && button->text() == wanted);
}

void Seen::press(const char* name, int which) const {
    control<QAbstractButton>(name, which).click();
}

void Seen::choose(const char* picker, int index) const {
    auto& box = control<QComboBox>(picker);
    box.setCurrentIndex(index);
    Q_EMIT box.activated(index);
}

}  // namespace quorvi::test
