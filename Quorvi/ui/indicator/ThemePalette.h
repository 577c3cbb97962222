#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

#include "Quorvi/dictation/DictationStage.h"
#include "QuorviCore/settings/RecordingTheme.h"

namespace quorvi {

// The colours and fonts of the recording indicator for a theme and the desktop's light or dark
// palette.
struct ThemePalette {
    enum class FontDesign { system, rounded, serif };

    QColor ink;           // primary text
    QColor secondaryInk;  // messages and hints
    QColor accent;
    QColor surfaceTop;  // gradient from the top left to the bottom right
    QColor surfaceBottom;
    QColor border;
    QColor wash;  // overlay on the surface
    FontDesign fontDesign = FontDesign::system;

    static ThemePalette of(RecordingTheme theme, const QPalette& desktop);

    // The colour of the status icon.
    QColor stateAccent(DictationStage stage) const;

    // `base` in the theme's font design, `pixels` high.
    QFont font(QFont base, int pixels, QFont::Weight weight) const;

private:
    QColor warning_;  // the status icon's after a failure
};

}  // namespace quorvi
