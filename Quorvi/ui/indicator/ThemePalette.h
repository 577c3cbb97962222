#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

#include "Quorvi/dictation/DictationStage.h"
#include "Quorvi/dictation/RecordingTheme.h"

namespace quorvi {

// The colours and the lettering of the recording indicator in one theme, under the desktop's light
// or dark palette.
struct ThemePalette {
    enum class FontDesign { system, rounded, serif };

    QColor ink;           // primary text
    QColor secondaryInk;  // messages and hints
    QColor accent;
    QColor surfaceTop;  // of the surface's gradient, from the top leading to the bottom trailing
    QColor surfaceBottom;
    QColor border;
    QColor wash;  // laid over the surface
    FontDesign fontDesign = FontDesign::system;

    static ThemePalette of(RecordingTheme theme, const QPalette& desktop);

    // The colour of the status icon.
    QColor stateAccent(DictationStage stage) const;

    // `base` in the theme's design, so many pixels high.
    QFont font(QFont base, int pixels, QFont::Weight weight) const;

private:
    QColor warning_;  // the status icon's when something needs attention
};

}  // namespace quorvi
