#pragma once

#include <QToolButton>
#include <QWidget>
#include <functional>

#include "Quorvi/dictation/AppModel.h"

namespace quorvi {

// The small floating capsule near the bottom of the screen that shows what a dictation is doing. It
// never takes the focus from the application the user dictates into, and lets clicks through unless
// it offers a button. Redraws when the controller changes, and only while it is visible.
class RecordingPanel : public QWidget {
public:
    // `isComposited` says whether windows can be translucent at the moment.
    RecordingPanel(AppModel& model, std::function<bool()> isComposited);

    // Shows the panel on the screen with the mouse pointer.
    void present();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    void acceptMouse(bool accept);
    void place();
    void applyShape();

    AppModel& model_;
    std::function<bool()> isComposited_;
    QToolButton copyButton_;
    Subscription changes_;
};

}  // namespace quorvi
