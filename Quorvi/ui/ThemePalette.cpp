#include "Quorvi/ui/ThemePalette.h"

namespace quorvi {

namespace {

QColor rgb(float red, float green, float blue, float opacity = 1) {
    return QColor::fromRgbF(red, green, blue, opacity);
}

QColor withOpacity(QColor color, float opacity) {
    color.setAlphaF(opacity);
    return color;
}

}  // namespace

ThemePalette ThemePalette::of(RecordingTheme theme, const QPalette& desktop) {
    const bool dark = desktop.color(QPalette::Window).lightnessF() < 0.5F;
    ThemePalette colors;
    switch (theme) {
        case RecordingTheme::glass: {
            const QColor surface = dark ? rgb(0.16F, 0.17F, 0.19F) : rgb(0.97F, 0.975F, 0.985F);
            colors.ink = dark ? rgb(1, 1, 1, 0.92F) : rgb(0, 0, 0, 0.86F);
            colors.secondaryInk = dark ? rgb(1, 1, 1, 0.62F) : rgb(0, 0, 0, 0.58F);
            colors.accent = rgb(0.2F, 0.43F, 0.83F);
            colors.surfaceTop = colors.surfaceBottom = withOpacity(surface, 0.96F);
            colors.border = rgb(1, 1, 1, dark ? 0.18F : 0.7F);
            break;
        }
        case RecordingTheme::midnight:
            colors.ink = rgb(1, 1, 1);
            colors.secondaryInk = rgb(0.68F, 0.75F, 0.78F);
            colors.accent = rgb(0.47F, 0.93F, 0.76F);
            colors.surfaceTop = rgb(0.12F, 0.15F, 0.19F);
            colors.surfaceBottom = rgb(0.06F, 0.08F, 0.11F);
            colors.border = rgb(1, 1, 1, 0.13F);
            break;
        case RecordingTheme::paper:
            colors.ink = rgb(0.19F, 0.17F, 0.14F);
            colors.secondaryInk = rgb(0.43F, 0.39F, 0.33F);
            colors.accent = rgb(0.65F, 0.28F, 0.16F);
            colors.surfaceTop = colors.surfaceBottom = rgb(0.99F, 0.97F, 0.92F);
            colors.border = rgb(0.19F, 0.17F, 0.14F, 0.16F);
            colors.fontDesign = QFont::Serif;
            break;
    }
    colors.wash = withOpacity(colors.accent, dark ? 0.08F : 0.025F);
    return colors;
}

QColor ThemePalette::stateAccent(RecordingTheme theme, DictationStage stage, const QColor& accent) {
    if (stage != DictationStage::failure) return accent;
    return theme == RecordingTheme::midnight ? rgb(1, 0.69F, 0.52F) : rgb(0.93F, 0.47F, 0.05F);
}

}  // namespace quorvi
