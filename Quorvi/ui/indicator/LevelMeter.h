#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QElapsedTimer>
#include <QWidget>
#include <array>

namespace quorvi {

// How loud it is: seven bars that follow the level smoothly. Wakes up only while they move.
class LevelMeter : public QWidget {
public:
    static constexpr std::array<double, 7> weights{7, 12, 17, 10, 15, 9, 19};
    // In points, for a level that is taken to lie from 0 to 1.
    static double barHeight(std::size_t bar, double level);

    explicit LevelMeter(QWidget* parent);

    void setLevel(double level);
    void setColor(const QColor& color);
    // Without movement the bars jump to the level.
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
    double from_ = 0;   // where the movement began
    double level_ = 0;  // where it leads
    double shown_ = 0;
    QElapsedTimer sinceBegin_;
    QBasicTimer frames_;
};

}  // namespace quorvi
