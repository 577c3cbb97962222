#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

#include "Quorvi/dictation/DictationStage.h"

namespace quorvi {

// Draws the icon of a stage: a microphone while recording or idle, a speech bubble while working, a
// tick, a clipboard, or an exclamation mark. `inner` is the colour of details on filled shapes.
void paintStageIcon(QPainter& painter, const QRectF& bounds, DictationStage stage,
                    const QColor& color, const QColor& inner = Qt::white);

// The copy icon (two sheets) and the download icon (an arrow onto a line).
void paintCopySign(QPainter& painter, const QRectF& bounds, const QColor& color);
void paintRetrySign(QPainter& painter, const QRectF& bounds, const QColor& color);
void paintDownloadSign(QPainter& painter, const QRectF& bounds, const QColor& color);

// Draws the wave of the program's logo.
void paintWaveform(QPainter& painter, const QRectF& bounds, const QColor& color);

}  // namespace quorvi
