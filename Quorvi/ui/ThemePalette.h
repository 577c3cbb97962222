#pragma once

#include <QColor>
#include <QFont>
#include <QGradient>
#include <QPalette>

#include "Quorvi/dictation/DictationStage.h"
#include "Quorvi/dictation/RecordingTheme.h"

namespace quorvi {

// The colours of the recording indicator in one theme, under the desktop's light or dark palette.
struct ThemePalette {
    QColor ink;           // primary text
    QColor secondaryInk;  // messages and hints
    QColor accent;
    QColor surfaceTop;
    QColor surfaceBottom;
    QColor border;
    QColor wash;  // laid over the surface
    QFont::StyleHint fontDesign = QFont::SansSerif;

    static ThemePalette of(RecordingTheme theme, const QPalette& desktop);

    // The colour of the status icon.
    static QColor stateAccent(RecordingTheme theme, DictationStage stage, const QColor& accent);
};

}  // namespace quorvi
