#pragma once

#include <QAbstractButton>
#include <QBasicTimer>
#include <QLabel>
#include <QWidget>

class QTextLayout;

#include "Quorvi/ui/indicator/ThemePalette.h"

// The parts of the recording indicator.
namespace quorvi {

// The icon of the stage, or a spinner while the program works. Animates only while visible.
class StageSign : public QWidget {
public:
    explicit StageSign(QWidget* parent);
    void show(DictationStage stage, const ThemePalette& colors);
    bool isSpinning() const { return steps_.isActive(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void turnOrRest();
    void paintSpinner(QPainter& painter) const;

    DictationStage stage_ = DictationStage::idle;
    QColor color_;
    QColor inner_;
    int step_ = 0;
    QBasicTimer steps_;
};

// A text with a maximum number of lines; the rest is elided.
class HudText : public QLabel {
public:
    explicit HudText(QWidget* parent);
    void setLineLimit(int lines);
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    // Breaks the text into lines. Returns the number of characters that fit.
    int breakLines(QTextLayout& layout, double width) const;

    int lines_ = 1;
};

// The time in digits of equal width, so that nothing beside it moves.
class HudTime : public QLabel {
public:
    explicit HudTime(QWidget* parent);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double digitWidth() const;
};

// A button that never takes the focus: a capsule with a text, or only an icon.
class HudButton : public QAbstractButton {
public:
    using Sign = void (*)(QPainter& painter, const QRectF& bounds, const QColor& color);

    HudButton(Sign sign, QWidget* parent);
    void setColors(const ThemePalette& colors);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    Sign sign_;
    QColor color_;
    QColor ground_;
};

}  // namespace quorvi
