#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

#include "Quorvi/dictation/DictationStage.h"

namespace quorvi {

// Draws the sign of a stage into the rectangle: a microphone while listening or ready, dots while
// working, a tick, a clipboard, or an exclamation mark.
void paintStageIcon(QPainter& painter, const QRectF& bounds, DictationStage stage,
                    const QColor& color);

// Draws the program's mark, a short wave of sound.
void paintWaveform(QPainter& painter, const QRectF& bounds, const QColor& color);

}  // namespace quorvi
