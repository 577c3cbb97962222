#include "Quorvi/ui/design/Texts.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <algorithm>
#include <map>
#include <vector>

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
// Laying out a text takes time: more than three minutes of quick speech, and more marks than any
// script puts on one letter, are not shown. A change of the direction or the script counts as some
// characters, since each such part is laid out by itself.
constexpr qsizetype longestShown = 4'000;
constexpr qsizetype mostMarks = 16;
constexpr qsizetype partCost = 16;

bool beginsPart(QChar character, QChar::Script& script) {
    switch (character.direction()) {
        case QChar::DirLRE:
        case QChar::DirLRO:
        case QChar::DirRLE:
        case QChar::DirRLO:
        case QChar::DirPDF:
        case QChar::DirLRI:
        case QChar::DirRLI:
        case QChar::DirFSI:
        case QChar::DirPDI:
            return true;
        default:
            break;
    }
    const auto its = character.script();
    if (its == script || its <= QChar::Script_Common) return false;
    script = its;
    return true;
}

// What a label shows of a text, and where each of its characters comes from.
struct Shown {
    QString text;
    std::vector<qsizetype> origins;  // with that of the end
    qsizetype length = 0;            // without the sign that the text goes on

    void add(QChar character, qsizetype origin) {
        text += character;
        origins.push_back(origin);
    }
};

// `limit` is the most that is shown of the text.
Shown shownOf(const QString& text, qsizetype limit) {
    Shown shown;
    qsizetype run = 0, marks = 0, at = 0, cost = 0;
    auto script = QChar::Script_Unknown;
    for (; at < std::min(text.size(), limit) && cost < longestShown; ++at) {
        const auto character = text[at];
        marks = character.isMark() ? marks + 1 : 0;
        if (marks > mostMarks) continue;
        // One end of a line is one character of the label, too.
        if (character == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n') continue;
        run = character.isSpace() ? 0 : run + 1;
        if (run > longestWord && !character.isLowSurrogate() && !character.isMark()) {
            shown.add(breakSign, at);
            run = 1;
        }
        shown.add(character, at);
        cost += beginsPart(character, script) ? partCost : 1;
    }
    if (at < text.size() && !shown.text.isEmpty() && shown.text.back().isHighSurrogate()) {
        shown.text.chop(1);
        at = shown.origins.back();
        shown.origins.pop_back();
    }
    shown.length = shown.text.size();
    shown.origins.push_back(at);
    if (at < text.size()) shown.text += QStringLiteral(" …");
    return shown;
}

// A text that can be selected. What is copied is the text itself: whole if all that is shown is
// selected, and without the signs that let it break or say that it goes on.
class ContentLabel : public QLabel {
public:
    ContentLabel() {
        setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }

    // Qt asks for both several times, and lays the text out each time.
    int heightForWidth(int width) const override {
        const auto known = heights_.find(width);
        if (known != heights_.end()) return known->second;
        return heights_[width] = QLabel::heightForWidth(width);
    }
    QSize sizeHint() const override {
        if (text().size() < longestMeasured) return QLabel::sizeHint();
        const int width = fontMetrics().averageCharWidth() * charactersOfLine;
        return {width, heightForWidth(width)};
    }

    void setContent(const QString& content, qsizetype limit) {
        if (content == content_ && limit == limit_) return;
        content_ = content;
        limit_ = limit;
        setAlignment((content.isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft) |
                     Qt::AlignAbsolute | Qt::AlignTop);
        heights_.clear();
        setText(shownOf(content, limit).text);
        setAccessibleName(limit < content.size() ? text().remove(breakSign) : content);
    }

protected:
    void changeEvent(QEvent* event) override {
        heights_.clear();
        QLabel::changeEvent(event);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->matches(QKeySequence::Copy))
            copy(QClipboard::Clipboard);
        else
            QLabel::keyPressEvent(event);
    }
    void mousePressEvent(QMouseEvent* event) override {
        // A selection that is dragged would be the label's text and not the user's.
        if (event->button() == Qt::LeftButton && !(event->modifiers() & Qt::ShiftModifier))
            setSelection(0, 0);
        QLabel::mousePressEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        QLabel::mouseReleaseEvent(event);
        if (QGuiApplication::clipboard()->supportsSelection()) copy(QClipboard::Selection);
    }
    void contextMenuEvent(QContextMenuEvent* event) override {
        auto* menu = new QMenu(this);  // no loop of its own: the window may go
        menu->setAttribute(Qt::WA_DeleteOnClose);
        const auto title = QCoreApplication::translate("TranscriptCard", "Copy");
        menu->addAction(title, this, [this] { copy(QClipboard::Clipboard); })
            ->setEnabled(hasSelectedText());
        menu->popup(event->globalPos());
    }

private:
    void copy(QClipboard::Mode mode) const {
        if (!hasSelectedText()) return;
        const auto shown = shownOf(content_, limit_);
        const auto origin = [&shown](qsizetype at) {
            return shown
                .origins[static_cast<std::size_t>(std::clamp(at, qsizetype{0}, shown.length))];
        };
        const qsizetype begin = selectionStart();
        const qsizetype end = begin + selectedText().size();
        const bool isAll = begin == 0 && end >= shown.length;
        const auto first = origin(begin);
        QGuiApplication::clipboard()->setText(
            isAll ? content_ : content_.mid(first, origin(end) - first), mode);
    }

    static constexpr qsizetype longestMeasured = 1'000;
    static constexpr int charactersOfLine = 80;

    QString content_;
    qsizetype limit_ = 0;
    mutable std::map<int, int> heights_;  // by width
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

void setContent(QLabel& label, const QString& text, qsizetype shown) {
    static_cast<ContentLabel&>(label).setContent(text, std::min(shown, text.size()));
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
