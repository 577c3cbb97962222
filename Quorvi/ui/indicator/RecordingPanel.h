#pragma once

#include <QPointer>
#include <QScreen>
#include <QWidget>
#include <functional>
#include <vector>

#include "Quorvi/platform/Surroundings.h"
#include "Quorvi/ui/indicator/Indicator.h"
#include "Quorvi/ui/indicator/RecordingOverlay.h"

namespace quorvi {

// The indicator's window, above all others near the bottom of the screen. It never takes the focus,
// is in no window list, and lets clicks through unless it has a button. It bypasses the window
// manager, whose frame would take the clicks. Main thread; the controller and the updater outlive
// it.
class RecordingPanel : public QWidget, public Indicator {
public:
    // `surroundings` returns what is known of the desktop, without blocking.
    RecordingPanel(AppModel& model, AppUpdater& updater,
                   std::function<Surroundings()> surroundings);

    // Shows the panel on the screen with the mouse pointer.
    void present() override;
    void dismiss() override { hide(); }
    void followSurroundings() override;

    // Whether there is a button.
    bool acceptsMouse() const;

    // The geometry of a panel of that size. `usable` is the part of the screen without the
    // desktop's bars.
    static QRect place(const QRect& usable, const QSize& size);
    // What the bars leave of the `available` part of a screen. `ratio` is the device pixel ratio.
    static QRect usable(QRect available, const QRect& screen, double ratio,
                        const std::vector<Surroundings::Bar>& bars);

private:
    void follow();
    void refit();
    void applyMouse();
    void applyShape();
    void placeOnScreen();

    AppModel& model_;
    AppUpdater& updater_;
    std::function<Surroundings()> surroundings_;
    Surroundings shown_;
    QPointer<QScreen> screen_;
    RecordingOverlay overlay_;
    double raisedAt_ = 0;  // in whole seconds of the recording
    Subscription changes_;
    Subscription updates_;
};

}  // namespace quorvi
