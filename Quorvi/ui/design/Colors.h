#pragma once

#include <QColor>
#include <QPalette>

namespace quorvi {

// What a colour is for. Every colour of the interface comes from the desktop's palette, light, dark
// or of high contrast.
enum class ColorRole {
    ink,        // text
    secondary,  // explanations; readable on a page and on a card
    accent,     // links, the selection, what is on
    onAccent,   // text on the accent
    page,       // the window's background
    sidebar,
    card,
    field,  // what is typed into
    hairline,
    success,
    warning,
    danger,
};

QColor color(ColorRole role, const QPalette& palette);
// In the program's current palette.
QColor color(ColorRole role);

bool isDark(const QPalette& palette);
bool isHighContrast(const QPalette& palette);

// The palette that widgets are drawn with: the desktop's, with an accent and placeholder texts that
// can be read. Done once more, it changes nothing.
QPalette refined(const QPalette& desktop);

// A share of the second colour over the first, 0 to 1.
QColor mixed(const QColor& below, const QColor& above, double share);
// The contrast of two opaque colours as the accessibility guidelines count it, 1 to 21.
double contrast(const QColor& one, const QColor& other);

}  // namespace quorvi
