#pragma once

#include <QColor>
#include <QPalette>

namespace quorvi {

// The purposes of colours. Every colour is derived from the desktop's palette: light, dark or high
// contrast.
enum class ColorRole {
    ink,        // text
    secondary,  // explanations; readable on a page and on a card
    accent,     // links, selection, switches that are on
    onAccent,   // text on the accent
    page,       // the window's background
    sidebar,
    card,
    field,  // text fields
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

// The desktop's palette with a readable accent and readable placeholder texts. Idempotent.
QPalette refined(const QPalette& desktop);

// Blends `above` over `below`; `share` is 0 to 1.
QColor mixed(const QColor& below, const QColor& above, double share);
// The WCAG contrast ratio of two opaque colours, 1 to 21.
double contrast(const QColor& one, const QColor& other);

}  // namespace quorvi
