#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QElapsedTimer>
#include <QWidget>
#include <array>

namespace quorvi {

// The input level as seven bars with smooth movement. Its timer runs only while they move.
class LevelMeter : public QWidget {
public:
    static constexpr std::array<double, 7> weights{7, 12, 17, 10, 15, 9, 19};
    // In points; the level is clamped to 0 to 1.
    static double barHeight(std::size_t bar, double level);

    explicit LevelMeter(QWidget* parent);

    void setLevel(double level);
    void setColor(const QColor& color);
    // If false, the bars jump to the level.
    void setAnimated(bool animated) { animated_ = animated; }

    double shownLevel() const { return shown_; }
    bool isMoving() const { return frames_.isActive(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void advance();
    void settle();

    QColor color_;
    bool animated_ = true;
    double from_ = 0;   // start of the movement
    double level_ = 0;  // its end
    double shown_ = 0;
    QElapsedTimer sinceBegin_;
    QBasicTimer frames_;
};

}  // namespace quorvi
