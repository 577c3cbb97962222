#pragma once

#include <QFont>
#include <QLabel>
#include <QString>
#include <limits>
#include <string_view>

#include "Quorvi/ui/design/Colors.h"

namespace quorvi {

// The type scale, relative to the desktop's font.
enum class TextStyle { title, heading, body, caption, eyebrow, figure };

QFont textFont(TextStyle style);

QString qt(std::string_view utf8);

// A label with the role of a heading for screen readers.
class HeadingLabel : public QLabel {
public:
    HeadingLabel(const QString& text, TextStyle style);
};

// Plain-text labels; all but the eyebrow wrap. The caller's layout takes ownership.
HeadingLabel* titleText(const QString& text);
HeadingLabel* headingText(const QString& text);
QLabel* eyebrowText(const QString& text);  // small, in capital letters as given
QLabel* bodyText(const QString& text = {});
QLabel* secondaryText(const QString& text = {});
QLabel* captionText(const QString& text = {});  // secondary and smaller

// The user's own text: selectable, and aligned by its script's direction. setContent() is for such
// a label only; it shows at most `shown` characters of the text, all of which can be copied.
QLabel* contentText(const QString& text = {});
void setContent(QLabel& label, const QString& text,
                qsizetype shown = std::numeric_limits<qsizetype>::max());

// A decorative symbol beside a text; hidden from screen readers.
class SymbolLabel : public QWidget {
public:
    explicit SymbolLabel(const char* name, int size = 18, ColorRole role = ColorRole::ink);
    void setSymbol(const char* name, ColorRole role);
    QSize sizeHint() const override { return {size_, size_}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const char* name_;
    int size_;
    ColorRole role_;
};

}  // namespace quorvi
