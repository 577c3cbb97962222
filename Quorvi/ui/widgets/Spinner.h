#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace quorvi {

// A small spinning arc for work in progress. Spins only while visible, and not at all if the
// desktop disables animations.
class Spinner : public QWidget {
public:
    Spinner();
    QSize sizeHint() const override { return {16, 16}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    QBasicTimer timer_;
    int turn_ = 0;  // degrees
};

}  // namespace quorvi
