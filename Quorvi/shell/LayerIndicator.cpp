#include "Quorvi/shell/LayerIndicator.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QEnterEvent>
#include <QImage>
#include <QMouseEvent>
#include <cstring>
#include <utility>

namespace quorvi {
namespace {

constexpr int screenMargin = 28;  // as the panel's

// A point in the coordinates of the overlay, as a mouse event of one of its buttons.
void sendMouse(QWidget& overlay, QWidget& button, QEvent::Type type, QPointF at) {
    const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, button.mapFrom(&overlay, at), at, Qt::LeftButton, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&button, &event);
}

}  // namespace

LayerIndicator::LayerIndicator(AppModel& model, AppUpdater& updater, Scheduler& scheduler,
                               std::function<Surroundings()> surroundings)
    : surroundings_(std::move(surroundings)),
      overlay_(model, updater),
      surface_(
          scheduler, screenMargin,
          {.onPointer = [this](auto event, double x, double y) { followPointer(event, {x, y}); },
           .onScale =
               [this](int scale) {
                   scale_ = scale;
                   draw();
               },
           .onClosed = [this] { draw(); }}) {
    overlay_.setAttribute(Qt::WA_DontShowOnScreen);
    overlay_.setAttribute(Qt::WA_ShowWithoutActivating);
    overlay_.setAttribute(Qt::WA_TranslucentBackground);
    overlay_.setAttribute(Qt::WA_QuitOnClose, false);
    overlay_.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    overlay_.setFocusPolicy(Qt::NoFocus);
    overlay_.setWindowTitle(QCoreApplication::translate("RecordingPanel", "Quorvi dictation"));
    overlay_.installEventFilter(this);
}

void LayerIndicator::present() {
    overlay_.setReducesMotion(surroundings_().reducesMotion);
    overlay_.show();
    draw();
}

void LayerIndicator::dismiss() {
    hover(nullptr, {});
    pressed_ = nullptr;
    overlay_.hide();
    surface_.hide();
}

void LayerIndicator::followSurroundings() {
    if (overlay_.isVisible()) overlay_.setReducesMotion(surroundings_().reducesMotion);
}

// Qt asks the widget to paint itself when any part has changed.
bool LayerIndicator::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::UpdateRequest)
        QMetaObject::invokeMethod(this, [this] { draw(); }, Qt::QueuedConnection);
    return false;
}

void LayerIndicator::draw() {
    if (!overlay_.isVisible()) return;
    QImage image(overlay_.size() * scale_, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale_);
    image.fill(Qt::transparent);
    overlay_.render(&image, {}, {}, QWidget::DrawChildren);
    LayerSurface::Picture picture{
        .width = overlay_.width(), .height = overlay_.height(), .scale = scale_};
    picture.pixels.resize(static_cast<std::size_t>(image.sizeInBytes()) / sizeof(std::uint32_t));
    std::memcpy(picture.pixels.data(), image.constBits(), image.sizeInBytes());
    for (const auto* button : overlay_.findChildren<QAbstractButton*>()) {
        if (!button->isVisible()) continue;
        const QRect area(button->mapTo(&overlay_, QPoint()), button->size());
        picture.clickable.push_back({area.x(), area.y(), area.width(), area.height()});
    }
    surface_.show(std::move(picture));
}

void LayerIndicator::followPointer(LayerSurface::PointerEvent event, QPointF at) {
    using enum LayerSurface::PointerEvent;
    auto* button =
        event == left ? nullptr : qobject_cast<QAbstractButton*>(overlay_.childAt(at.toPoint()));
    hover(button, at);
    if (event == pressed) pressed_ = button;
    if (event == pressed && pressed_) sendMouse(overlay_, *pressed_, QEvent::MouseButtonPress, at);
    if (event != released) return;
    // KWin 5 has given the surface the focus, which goes back when that surface is gone.
    surface_.hide();
    draw();
    // What the click does may end the indicator.
    if (auto* held = std::exchange(pressed_, nullptr).data())
        sendMouse(overlay_, *held, QEvent::MouseButtonRelease, at);
}

void LayerIndicator::hover(QWidget* button, QPointF at) {
    if (button == hovered_) return;
    if (auto* before = std::exchange(hovered_, button).data()) {
        before->setAttribute(Qt::WA_UnderMouse, false);
        QEvent leaving(QEvent::Leave);
        QCoreApplication::sendEvent(before, &leaving);
    }
    if (!button) return;
    button->setAttribute(Qt::WA_UnderMouse);
    QEnterEvent entering(button->mapFrom(&overlay_, at), at, at);
    QCoreApplication::sendEvent(button, &entering);
}

}  // namespace quorvi
