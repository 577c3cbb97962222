#include "Quorvi/ui/indicator/ThemePalette.h"

namespace quorvi {

namespace {

QColor rgb(float red, float green, float blue, float opacity = 1) {
    return QColor::fromRgbF(red, green, blue, opacity);
}

QColor withOpacity(QColor color, float opacity) {
    color.setAlphaF(opacity);
    return color;
}

// Glass is slightly translucent; blurring is left to the compositor.
constexpr float glassOpacity = 0.95F;

}  // namespace

ThemePalette ThemePalette::of(RecordingTheme theme, const QPalette& desktop) {
    const auto window = desktop.color(QPalette::Window);
    const bool dark = window.lightnessF() < 0.5F;
    ThemePalette colors;
    colors.warning_ = dark ? rgb(1, 0.62F, 0.04F) : rgb(0.89F, 0.42F, 0);
    switch (theme) {
        case RecordingTheme::glass: {
            colors.ink = desktop.color(QPalette::WindowText);
            colors.secondaryInk = withOpacity(colors.ink, 0.68F);
            colors.accent = rgb(0.2F, 0.43F, 0.83F);
            colors.surfaceTop =
                withOpacity(dark ? window.lighter(115) : rgb(1, 1, 1), glassOpacity);
            colors.surfaceBottom = withOpacity(window, glassOpacity);
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
            colors.fontDesign = FontDesign::rounded;
            colors.warning_ = rgb(1, 0.69F, 0.52F);
            break;
        case RecordingTheme::paper:
            colors.ink = rgb(0.19F, 0.17F, 0.14F);
            colors.secondaryInk = rgb(0.43F, 0.39F, 0.33F);
            colors.accent = rgb(0.65F, 0.28F, 0.16F);
            colors.surfaceTop = colors.surfaceBottom = rgb(0.99F, 0.97F, 0.92F);
            colors.border = rgb(0.19F, 0.17F, 0.14F, 0.16F);
            colors.fontDesign = FontDesign::serif;
            colors.warning_ = rgb(0.89F, 0.42F, 0);
            break;
    }
    colors.wash = withOpacity(colors.accent, dark ? 0.08F : 0.025F);
    return colors;
}

QColor ThemePalette::stateAccent(DictationStage stage) const {
    return stage == DictationStage::failure ? warning_ : accent;
}

QFont ThemePalette::font(QFont base, int pixels, QFont::Weight weight) const {
    switch (fontDesign) {
        case FontDesign::system:
            break;
        case FontDesign::rounded:
            // The first installed family; otherwise the desktop's.
            base.setFamilies({QStringLiteral("Nunito"), QStringLiteral("Varela Round"),
                              QStringLiteral("Quicksand"), QStringLiteral("Comfortaa"),
                              QStringLiteral("Ubuntu"), base.family()});
            break;
        case FontDesign::serif:
            base.setStyleHint(QFont::Serif);
            base.setFamilies({QStringLiteral("serif")});
            break;
    }
    base.setPixelSize(pixels);
    base.setWeight(weight);
    return base;
}

}  // namespace quorvi
