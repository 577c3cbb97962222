#include "Quorvi/ui/design/Texts.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>

#include "Quorvi/ui/design/Symbols.h"

namespace quorvi {

namespace {

QLabel* plain(QLabel* label, TextStyle style, bool wraps) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(wraps);
    label->setFont(textFont(style));
    return label;
}

// Longer words may be broken after this many characters.
constexpr qsizetype longestWord = 24;
constexpr QChar breakSign(0x200B);  // zero width space
// Laying out a text takes time: far more than three minutes of speech, and more marks than any
// script puts on one letter, are not shown.
constexpr qsizetype longestShown = 10'000;
constexpr qsizetype mostMarks = 16;

QString breakable(const QString& text) {
    QString result;
    qsizetype run = 0, marks = 0;
    for (qsizetype i = 0; i < text.size() && result.size() < longestShown; ++i) {
        marks = text[i].isMark() ? marks + 1 : 0;
        if (marks > mostMarks) continue;
        run = text[i].isSpace() ? 0 : run + 1;
        if (run > longestWord && !text[i].isLowSurrogate() && !text[i].isMark()) {
            result += breakSign;
            run = 1;
        }
        result += text[i];
    }
    if (result.size() >= longestShown) {
        if (result.back().isHighSurrogate()) result.chop(1);
        result += QStringLiteral(" …");
    }
    return result;
}

// A text that can be selected, and is copied without the signs that let it break.
class ContentLabel : public QLabel {
public:
    ContentLabel() {
        setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->matches(QKeySequence::Copy))
            copy(QClipboard::Clipboard);
        else
            QLabel::keyPressEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        QLabel::mouseReleaseEvent(event);
        if (QGuiApplication::clipboard()->supportsSelection()) copy(QClipboard::Selection);
    }
    void contextMenuEvent(QContextMenuEvent* event) override {
        QMenu menu(this);
        const auto title = QCoreApplication::translate("TranscriptCard", "Copy");
        menu.addAction(title, this, [this] { copy(QClipboard::Clipboard); })
            ->setEnabled(hasSelectedText());
        menu.exec(event->globalPos());
    }

private:
    void copy(QClipboard::Mode mode) const {
        if (hasSelectedText())
            QGuiApplication::clipboard()->setText(selectedText().remove(breakSign), mode);
    }
};

}  // namespace

QString qt(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QFont textFont(TextStyle style) {
    QFont font = QApplication::font();
    const auto scale = [&font](double factor) {
        if (font.pointSizeF() > 0)
            font.setPointSizeF(font.pointSizeF() * factor);
        else
            font.setPixelSize(qRound(font.pixelSize() * factor));
    };
    switch (style) {
        case TextStyle::title:
            scale(2);
            font.setWeight(QFont::Bold);
            break;
        case TextStyle::figure:
            scale(1.7);
            font.setWeight(QFont::DemiBold);
            break;
        case TextStyle::heading:
            scale(1.18);
            font.setWeight(QFont::DemiBold);
            break;
        case TextStyle::body:
            break;
        case TextStyle::caption:
            scale(0.92);
            break;
        case TextStyle::eyebrow:
            scale(0.82);
            font.setWeight(QFont::DemiBold);
            font.setLetterSpacing(QFont::PercentageSpacing, 108);
            break;
    }
    return font;
}

// Sets the text last: Qt announces the change to screen readers with the class that the object has
// at that moment.
HeadingLabel::HeadingLabel(const QString& text, TextStyle style) {
    plain(this, style, true);
    setText(text);
}

HeadingLabel* titleText(const QString& text) {
    return new HeadingLabel(text, TextStyle::title);
}

HeadingLabel* headingText(const QString& text) {
    return new HeadingLabel(text, TextStyle::heading);
}

QLabel* eyebrowText(const QString& text) {
    auto* label = plain(new QLabel(text), TextStyle::eyebrow, true);
    label->setForegroundRole(QPalette::Link);
    return label;
}

QLabel* bodyText(const QString& text) {
    return plain(new QLabel(text), TextStyle::body, true);
}

QLabel* secondaryText(const QString& text) {
    auto* label = bodyText(text);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QLabel* captionText(const QString& text) {
    auto* label = plain(new QLabel(text), TextStyle::caption, true);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QLabel* contentText(const QString& text) {
    auto* label = plain(new ContentLabel, TextStyle::body, true);
    setContent(*label, text);
    return label;
}

void setContent(QLabel& label, const QString& text) {
    if (label.accessibleName() == text) return;
    label.setAlignment((text.isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                       Qt::AlignTop);
    label.setText(breakable(text));
    label.setAccessibleName(text);
}

SymbolLabel::SymbolLabel(const char* name, int size, ColorRole role)
    : name_(name), size_(size), role_(role) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SymbolLabel::setSymbol(const char* name, ColorRole role) {
    name_ = name;
    role_ = role;
    update();
}

void SymbolLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const auto tint = isEnabled() ? color(role_, palette())
                                  : palette().color(QPalette::Disabled, QPalette::WindowText);
    painter.drawPixmap(QPointF(0, (height() - size_) / 2.0),
                       symbolPixmap(name_, tint, size_, devicePixelRatioF()));
}

}  // namespace quorvi
