#pragma once

#include <QPointer>
#include <QScreen>
#include <QWidget>
#include <functional>
#include <vector>

#include "Quorvi/platform/Surroundings.h"
#include "Quorvi/ui/indicator/RecordingOverlay.h"

namespace quorvi {

// The window of the indicator, above all others near the bottom of the screen. It never takes the
// focus from the application the user dictates into, is in no list of windows, and lets clicks
// through unless it offers a button. Window managers have no part in it: the frame that they put
// around a window takes its clicks even where the window itself lets them through. The controller
// and the updater outlive it.
class RecordingPanel : public QWidget {
public:
    // `surroundings` are what is known of the desktop at the moment; they may not wait.
    RecordingPanel(AppModel& model, AppUpdater& updater,
                   std::function<Surroundings()> surroundings);

    // Shows the panel on the screen with the mouse pointer.
    void present();
    // What is known of the desktop has changed.
    void followSurroundings();

    // Whether there is something to click on.
    bool acceptsMouse() const;

    // Where a panel of this size belongs on a screen, of which `usable` is free of the desktop's
    // own bars.
    static QRect place(const QRect& usable, const QSize& size);
    // What the bars leave of the `available` part of a screen. `ratio` of the display's pixels are
    // one of ours.
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
    double raisedAt_ = 0;  // whole seconds of the recording
    Subscription changes_;
    Subscription updates_;
};

}  // namespace quorvi
