#pragma once

#include <QWidget>
#include <functional>

#include "Quorvi/ui/indicator/RecordingOverlay.h"

namespace quorvi {

// The window of the indicator, above all others near the bottom of the screen. It never takes the
// focus from the application the user dictates into, is in no list of windows, and lets clicks
// through unless it offers a button. Window managers have no part in it: the frame that they put
// around a window takes its clicks even where the window itself lets them through. The controller
// and the updater outlive it.
class RecordingPanel : public QWidget {
public:
    // What the toolkit doesn't know of the desktop. None of it may wait.
    struct Desktop {
        std::function<bool()> isComposited;    // windows can be translucent at the moment
        std::function<bool()> reducesMotion;   // the user wants as little movement as possible
    };

    RecordingPanel(AppModel& model, AppUpdater& updater, Desktop desktop);

    // Shows the panel on the screen with the mouse pointer.
    void present();

    // Whether there is something to click on.
    bool acceptsMouse() const;

    // Where a panel of this size belongs on a screen, of which `usable` is free of the desktop's
    // own bars.
    static QRect place(const QRect& usable, const QSize& size);

private:
    void follow();
    void refit();
    void applyMouse();
    void applyShape();

    AppModel& model_;
    AppUpdater& updater_;
    Desktop desktop_;
    RecordingOverlay overlay_;
    double raisedAt_ = 0;  // whole seconds of the recording
    Subscription changes_;
    Subscription updates_;
};

}  // namespace quorvi
