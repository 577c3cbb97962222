#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

#include "Quorvi/dictation/DictationStage.h"

namespace quorvi {

// Draws the sign of a stage into the rectangle: a microphone while listening or ready, a speech
// bubble while working, a tick, a clipboard, or an exclamation mark. `inner` is what lies upon a
// filled sign.
void paintStageIcon(QPainter& painter, const QRectF& bounds, DictationStage stage,
                    const QColor& color, const QColor& inner = Qt::white);

// Two sheets, for copying, and an arrow onto a line, for a download.
void paintCopySign(QPainter& painter, const QRectF& bounds, const QColor& color);
void paintDownloadSign(QPainter& painter, const QRectF& bounds, const QColor& color);

// Draws the program's mark, a short wave of sound.
void paintWaveform(QPainter& painter, const QRectF& bounds, const QColor& color);

}  // namespace quorvi
