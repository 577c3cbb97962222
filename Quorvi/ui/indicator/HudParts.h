#pragma once

#include <QAbstractButton>
#include <QBasicTimer>
#include <QLabel>
#include <QWidget>

class QTextLayout;

#include "Quorvi/ui/indicator/ThemePalette.h"

// What the recording indicator is put together from.
namespace quorvi {

// The sign of the stage, or a spinner while the program works. The spinner turns only while it can
// be seen.
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

// A text of at most so many lines; what is left over of the last one ends in an ellipsis.
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
    // Breaks the text into lines of the layout, and returns how much of it they hold.
    int breakLines(QTextLayout& layout, double width) const;

    int lines_ = 1;
};

// The time, in digits of one width, so that nothing beside it moves.
class HudTime : public QLabel {
public:
    explicit HudTime(QWidget* parent);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double digitWidth() const;
};

// A button without the focus: with a text it is a capsule, without one only its sign.
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
