#include "Quorvi/ui/design/Colors.h"

#include <QGuiApplication>
#include <algorithm>
#include <cmath>

namespace quorvi {

namespace {

double linear(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

QColor card(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    if (isHighContrast(palette)) return window;
    return isDark(palette) ? mixed(window, Qt::white, 0.06) : palette.color(QPalette::Base);
}

// Moves the colour towards black or white until it is readable on the surface.
QColor readable(QColor color, const QColor& surface, double least) {
    const QColor end = luminance(surface) < 0.2 ? Qt::white : Qt::black;
    for (int step = 0; step < 20 && contrast(color, surface) < least; ++step)
        color = mixed(color, end, 0.08);
    return color;
}

}  // namespace

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor mixed(const QColor& below, const QColor& above, double share) {
    const auto channel = [share](double from, double to) {
        return static_cast<float>(from + (to - from) * share);
    };
    return QColor::fromRgbF(channel(below.redF(), above.redF()),
                            channel(below.greenF(), above.greenF()),
                            channel(below.blueF(), above.blueF()));
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() < 0.5F;
}

bool isHighContrast(const QPalette& palette) {
    return contrast(palette.color(QPalette::Window), palette.color(QPalette::WindowText)) > 19.5;
}

QPalette refined(const QPalette& desktop) {
    QPalette palette = desktop;
    const QColor window = desktop.color(QPalette::Window);
    // Of the two surfaces below text, the one with the lower contrast.
    const QColor surface = isDark(desktop) ? card(desktop) : window;
    const bool strict = isHighContrast(desktop);
    const QColor accent =
        readable(desktop.color(QPalette::Active, QPalette::Highlight), surface, strict ? 7 : 4.5);
    const QColor onAccent = contrast(accent, Qt::white) >= contrast(accent, Qt::black)
                                ? QColor(Qt::white)
                                : QColor(Qt::black);
    const QColor ink = desktop.color(QPalette::Active, QPalette::WindowText);
    const QColor secondary = readable(mixed(window, ink, strict ? 0.9 : 0.62), surface, 4.6);
    for (auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Highlight, accent);
        palette.setColor(group, QPalette::HighlightedText, onAccent);
        palette.setColor(group, QPalette::Link, accent);
        palette.setColor(group, QPalette::PlaceholderText, secondary);
    }
    const QColor faint = mixed(window, ink, strict ? 0.6 : 0.42);
    for (auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

QColor color(ColorRole role, const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    const QColor ink = palette.color(QPalette::WindowText);
    const bool dark = isDark(palette);
    const bool strict = isHighContrast(palette);
    switch (role) {
        case ColorRole::ink:
            return ink;
        case ColorRole::secondary:
            return palette.color(QPalette::PlaceholderText);
        case ColorRole::accent:
            return palette.color(QPalette::Active, QPalette::Highlight);
        case ColorRole::onAccent:
            return palette.color(QPalette::Active, QPalette::HighlightedText);
        case ColorRole::page:
            return window;
        case ColorRole::sidebar:
            return strict ? window : mixed(window, dark ? Qt::black : ink, dark ? 0.18 : 0.04);
        case ColorRole::card:
            return card(palette);
        case ColorRole::field:
            if (strict) return window;
            return dark ? mixed(window, Qt::black, 0.22) : mixed(card(palette), window, 0.28);
        case ColorRole::hairline:
            return strict ? ink : mixed(card(palette), ink, dark ? 0.16 : 0.13);
        case ColorRole::success:
            return readable(QColor(0x1f, 0x8a, 0x4c), card(palette), strict ? 7 : 4.5);
        case ColorRole::warning:
            return readable(QColor(0xb3, 0x6b, 0x00), card(palette), strict ? 7 : 4.5);
        case ColorRole::danger:
            return readable(QColor(0xc9, 0x2f, 0x2c), card(palette), strict ? 7 : 4.5);
    }
    return ink;
}

QColor color(ColorRole role) {
    return color(role, QGuiApplication::palette());
}

}  // namespace quorvi
