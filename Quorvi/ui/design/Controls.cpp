#include "Quorvi/ui/design/Controls.h"

#include <QAction>
#include <QSignalBlocker>
#include <QVariant>
#include <QWheelEvent>

#include "Quorvi/ui/design/Symbols.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

namespace {

constexpr auto kindProperty = "quorviKind";
constexpr int textMargin = 8;
constexpr int searchSymbol = 16;

ColorRole tint(ButtonKind kind) {
    switch (kind) {
        case ButtonKind::primary:
            return ColorRole::onAccent;
        case ButtonKind::destructive:
            return ColorRole::danger;
        case ButtonKind::link:
            return ColorRole::accent;
        case ButtonKind::quiet:
            return ColorRole::secondary;
        case ButtonKind::regular:
            break;
    }
    return ColorRole::ink;
}

}  // namespace

QPushButton* button(const QString& text, ButtonKind kind, const char* symbol) {
    auto* made = new QPushButton(text);
    setKind(*made, kind);
    made->setAutoDefault(false);
    if (kind == ButtonKind::link) made->setCursor(Qt::PointingHandCursor);
    if (symbol) {
        made->setIcon(symbolIcon(symbol, tint(kind)));
        made->setIconSize(QSize(16, 16));
    }
    return made;
}

QPushButton* symbolButton(const QString& name, const char* symbol, ButtonKind kind) {
    auto* made = button({}, kind, symbol);
    made->setToolTip(name);
    made->setAccessibleName(name);
    return made;
}

void setKind(QPushButton& button, ButtonKind kind) {
    button.setProperty(kindProperty, static_cast<int>(kind));
}

ButtonKind kindOf(const QWidget* button) {
    return static_cast<ButtonKind>(button ? button->property(kindProperty).toInt() : 0);
}

Switch::Switch(const QString& text) : QCheckBox(text) {
    setProperty("quorviSwitch", true);
}

void Switch::show(bool on) {
    const QSignalBlocker quiet(this);
    setChecked(on);
}

Picker::Picker(const QString& accessibleName) {
    setAccessibleName(accessibleName);
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

void Picker::show(int index) {
    const QSignalBlocker quiet(this);
    setCurrentIndex(index);
}

void Picker::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

SearchField::SearchField(const QString& accessibleName, const QString& placeholder,
                         const char* symbol)
    : symbol_(new SymbolLabel(symbol, searchSymbol, ColorRole::secondary)) {
    setAccessibleName(accessibleName);
    setPlaceholderText(placeholder);
    setTextMargins(searchSymbol + 2 * textMargin - 2, 0, textMargin - 2, 0);
    symbol_->setParent(this);
    symbol_->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SearchField::offerClearing(const QString& name) {
    setClearButtonEnabled(true);
    // Qt's own clear button has no name for screen readers.
    if (auto* clear = findChild<QAction*>(QStringLiteral("_q_qlineeditclearaction")))
        clear->setText(name);
}

void SearchField::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    symbol_->setGeometry(textMargin + 2, 0, searchSymbol, height());
}

TextArea::TextArea(const QString& accessibleName, int lines) {
    setAccessibleName(accessibleName);
    setTabChangesFocus(true);
    // The style draws the field behind the text.
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(textMargin);
    setFixedHeight(fontMetrics().lineSpacing() * lines + 2 * (textMargin + frameWidth()));
}

void TextArea::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    update();
}

void TextArea::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    update();
}

}  // namespace quorvi
