#include "Quorvi/ui/indicator/RecordingPanel.h"

#include <QBitmap>
#include <QCursor>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <cmath>
#include <utility>

namespace quorvi {

namespace {

constexpr int screenMargin = 28;  // between the panel and the bottom of the usable screen

}  // namespace

RecordingPanel::RecordingPanel(AppModel& model, AppUpdater& updater, Desktop desktop)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::BypassWindowManagerHint),
      model_(model),
      updater_(updater),
      desktop_(std::move(desktop)),
      overlay_(model, updater, this) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_X11NetWmWindowTypeNotification);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_QuitOnClose, false);
    setFocusPolicy(Qt::NoFocus);
    setWindowTitle(QCoreApplication::translate("RecordingPanel", "Quorvi dictation"));
    resize(RecordingHUD::panelSize(model_.stage()));
    changes_ = model_.onChange([this] { follow(); });
    updates_ = updater_.onChange([this] { refit(); });
}

bool RecordingPanel::acceptsMouse() const {
    return model_.canCopyFromOverlay() ||
           (model_.stage() == DictationStage::recording && updater_.availableVersion());
}

QRect RecordingPanel::place(const QRect& usable, const QSize& size) {
    return {{usable.x() + (usable.width() - size.width()) / 2,
             usable.y() + usable.height() - screenMargin - size.height()},
            size};
}

void RecordingPanel::present() {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    setGeometry(place(screen->availableGeometry(), RecordingHUD::panelSize(model_.stage())));
    overlay_.setReducesMotion(desktop_.reducesMotion());
    applyShape();
    winId();  // so that there is a window to let the mouse through
    applyMouse();
    show();
    raise();
    raisedAt_ = 0;
}

void RecordingPanel::follow() {
    refit();
    // A window that has come to the front meanwhile may have covered it.
    const double second = std::floor(model_.elapsed());
    if (!isVisible() || second == raisedAt_) return;
    raisedAt_ = second;
    raise();
}

// Keeps the panel's middle and its bottom.
void RecordingPanel::refit() {
    if (!isVisible()) return;
    applyMouse();
    const auto size = RecordingHUD::panelSize(model_.stage());
    if (size == this->size()) return;
    const auto now = geometry();
    setGeometry({{now.x() + (now.width() - size.width()) / 2,
                  now.y() + now.height() - size.height()},
                 size});
    applyShape();
}

void RecordingPanel::applyMouse() {
    auto* window = windowHandle();
    const bool lets = !acceptsMouse();
    if (window && window->flags().testFlag(Qt::WindowTransparentForInput) != lets)
        window->setFlag(Qt::WindowTransparentForInput, lets);
}

// Without a compositor nothing is translucent: the window is cut to the capsule.
void RecordingPanel::applyShape() {
    const bool cutOut = !desktop_.isComposited();
    overlay_.setCutOut(cutOut);
    if (!cutOut) return clearMask();
    constexpr auto margin = RecordingHUD::shadowMargin;
    QBitmap shape(size());
    shape.fill(Qt::color0);
    QPainter painter(&shape);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::color1);
    painter.drawRoundedRect(rect().adjusted(margin, margin, -margin, -margin),
                            RecordingHUD::cornerRadius, RecordingHUD::cornerRadius);
    painter.end();
    setMask(shape);
}

}  // namespace quorvi
