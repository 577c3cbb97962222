#include "Quorvi/ui/indicator/RecordingPanel.h"

#include <QBitmap>
#include <QCursor>
#include <QGuiApplication>
#include <QPainter>
#include <QWindow>
#include <QtMath>
#include <cmath>
#include <utility>

namespace quorvi {

namespace {

constexpr int screenMargin = 28;  // between the panel and the bottom of the usable screen

}  // namespace

RecordingPanel::RecordingPanel(AppModel& model, AppUpdater& updater,
                               std::function<Surroundings()> surroundings)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::BypassWindowManagerHint),
      model_(model),
      updater_(updater),
      surroundings_(std::move(surroundings)),
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
    return model_.canCopyFromOverlay() || model_.canRetryFromOverlay() ||
           (model_.stage() == DictationStage::recording && updater_.availableVersion());
}

QRect RecordingPanel::place(const QRect& usable, const QSize& size) {
    return {{usable.x() + (usable.width() - size.width()) / 2,
             usable.y() + usable.height() - screenMargin - size.height()},
            size};
}

QRect RecordingPanel::usable(QRect available, const QRect& screen, double ratio,
                             const std::vector<Surroundings::Bar>& bars) {
    // Qt scales the sizes of screens but not their origins.
    const QRect pixels(screen.topLeft(), (QSizeF(screen.size()) * ratio).toSize());
    for (const auto& bar : bars) {
        const QRect common = pixels & QRect(bar.x, bar.y, bar.width, bar.height);
        if (common.isEmpty()) continue;
        const int depth =
            qCeil((bar.edge <= Surroundings::Bar::Edge::right ? common.width() : common.height()) /
                  ratio);
        switch (bar.edge) {
            case Surroundings::Bar::Edge::left:
                available.setLeft(qMax(available.left(), screen.left() + depth));
                break;
            case Surroundings::Bar::Edge::right:
                available.setRight(qMin(available.right(), screen.right() - depth));
                break;
            case Surroundings::Bar::Edge::top:
                available.setTop(qMax(available.top(), screen.top() + depth));
                break;
            case Surroundings::Bar::Edge::bottom:
                available.setBottom(qMin(available.bottom(), screen.bottom() - depth));
                break;
        }
    }
    return available;
}

void RecordingPanel::present() {
    screen_ = QGuiApplication::screenAt(QCursor::pos());
    if (!screen_) screen_ = QGuiApplication::primaryScreen();
    if (!screen_) return;
    shown_ = surroundings_();
    placeOnScreen();
    overlay_.setReducesMotion(shown_.reducesMotion);
    applyShape();
    winId();  // creates the window
    applyMouse();
    show();
    raise();
    raisedAt_ = 0;
}

void RecordingPanel::followSurroundings() {
    if (!isVisible() || !screen_) return;
    shown_ = surroundings_();
    placeOnScreen();
    overlay_.setReducesMotion(shown_.reducesMotion);
    applyShape();
}

void RecordingPanel::placeOnScreen() {
    // With several screens Qt excludes the area beside any bar on any of them.
    const bool isOnly = QGuiApplication::screens().size() == 1;
    const auto free = usable(isOnly ? screen_->availableGeometry() : screen_->geometry(),
                             screen_->geometry(), screen_->devicePixelRatio(), shown_.bars);
    setGeometry(place(free, RecordingHUD::panelSize(model_.stage())));
}

void RecordingPanel::follow() {
    refit();
    // Another window may have been raised above it.
    const double second = std::floor(model_.elapsed());
    if (!isVisible() || second == raisedAt_) return;
    raisedAt_ = second;
    raise();
}

// Keeps the panel's horizontal centre and its bottom.
void RecordingPanel::refit() {
    if (!isVisible()) return;
    applyMouse();
    const auto size = RecordingHUD::panelSize(model_.stage());
    if (size == this->size()) return;
    const auto now = geometry();
    setGeometry(
        {{now.x() + (now.width() - size.width()) / 2, now.y() + now.height() - size.height()},
         size});
    applyShape();
}

void RecordingPanel::applyMouse() {
    auto* window = windowHandle();
    const bool lets = !acceptsMouse();
    if (window && window->flags().testFlag(Qt::WindowTransparentForInput) != lets)
        window->setFlag(Qt::WindowTransparentForInput, lets);
}

// Without a compositor there is no translucency, so the window is cut to the capsule's shape.
void RecordingPanel::applyShape() {
    const bool cutOut = !shown_.isComposited;
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
