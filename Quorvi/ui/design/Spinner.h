#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace quorvi {

// A small turning arc: something is under way. Turns only while it can be seen, and not at all when
// the desktop asks for no animations.
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
