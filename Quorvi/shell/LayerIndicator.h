#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

#include "Quorvi/platform/Surroundings.h"
#include "Quorvi/platform/linux/wayland/layershell/LayerSurface.h"
#include "Quorvi/ui/indicator/Indicator.h"
#include "Quorvi/ui/indicator/RecordingOverlay.h"

namespace quorvi {

// The indicator on a Wayland desktop with surfaces above the windows: the widget is never a window
// of the desktop; its picture is shown whenever it changes. Clicks pass except on its buttons. Main
// thread; the controller, the updater and the scheduler outlive it.
class LayerIndicator final : public QObject, public Indicator {
public:
    // `surroundings` as in RecordingPanel.
    LayerIndicator(AppModel& model, AppUpdater& updater, Scheduler& scheduler,
                   std::function<Surroundings()> surroundings);

    void present() override;
    void dismiss() override;
    void followSurroundings() override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void draw();
    void followPointer(LayerSurface::PointerEvent event, QPointF at);
    void hover(QWidget* button, QPointF at);

    std::function<Surroundings()> surroundings_;
    RecordingOverlay overlay_;
    int scale_ = 1;
    QPointer<QWidget> hovered_;  // the button under the pointer
    QPointer<QWidget> pressed_;
    LayerSurface surface_;
};

}  // namespace quorvi
