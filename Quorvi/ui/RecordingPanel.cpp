#include "Quorvi/ui/RecordingPanel.h"

#include <QBitmap>
#include <QCursor>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QString>
#include <QWindow>
#include <algorithm>
#include <cmath>

#include "Quorvi/ui/StageIcon.h"
#include "Quorvi/ui/ThemePalette.h"

namespace quorvi {

namespace {

constexpr QSize panelSize(316, 92);
constexpr int shadowMargin = 8;
constexpr double capsuleRadius = 22;
constexpr int screenMargin = 28;  // between the panel and the bottom of the usable screen
constexpr double barWeights[] = {7, 12, 17, 10, 15, 9, 19};
constexpr double barWidth = 3;
constexpr double barGap = 3;

QString qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QRectF capsuleOf(const QRect& panel) {
    return QRectF(panel).adjusted(shadowMargin, shadowMargin, -shadowMargin, -shadowMargin);
}

bool usesTwoLines(DictationStage stage) {
    return stage == DictationStage::failure || stage == DictationStage::idle ||
           stage == DictationStage::clipboard || stage == DictationStage::learned;
}

QString elapsedText(double seconds) {
    const int whole = static_cast<int>(seconds);
    return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}

void paintCapsule(QPainter& painter, const QRectF& capsule, const ThemePalette& colors,
                  const QColor& border) {
    for (int ring = shadowMargin; ring > 0; --ring) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 5));
        const double spread = ring - 1;
        painter.drawRoundedRect(capsule.adjusted(-spread, -spread + 2, spread, spread + 1),
                                capsuleRadius + spread, capsuleRadius + spread);
    }
    QLinearGradient surface(capsule.topLeft(), capsule.bottomRight());
    surface.setColorAt(0, colors.surfaceTop);
    surface.setColorAt(1, colors.surfaceBottom);
    painter.setBrush(surface);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(capsule, capsuleRadius, capsuleRadius);
    painter.setBrush(colors.wash);
    painter.setPen(QPen(border, 1));
    painter.drawRoundedRect(capsule.adjusted(0.5, 0.5, -0.5, -0.5), capsuleRadius - 0.5,
                            capsuleRadius - 0.5);
}

void paintMeter(QPainter& painter, QPointF leftMiddle, double level, const QColor& accent) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent);
    double x = leftMiddle.x();
    for (double weight : barWeights) {
        const double height = 3 + std::clamp(level, 0.0, 1.0) * weight;
        painter.drawRoundedRect(QRectF(x, leftMiddle.y() - height / 2, barWidth, height), 1.5, 1.5);
        x += barWidth + barGap;
    }
}

}  // namespace

RecordingPanel::RecordingPanel(AppModel& model, std::function<bool()> isComposited)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus),
      model_(model),
      isComposited_(std::move(isComposited)),
      copyButton_(this) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::NoFocus);
    setFixedSize(panelSize);
    setWindowTitle(QStringLiteral("Quorvi dictation"));

    copyButton_.setFocusPolicy(Qt::NoFocus);
    copyButton_.setText(QStringLiteral("Copy"));
    copyButton_.setToolTip(QStringLiteral("Copy transcript"));
    copyButton_.setAccessibleName(QStringLiteral("Copy transcript"));
    copyButton_.setCursor(Qt::PointingHandCursor);
    copyButton_.setGeometry(panelSize.width() - shadowMargin - 66, 30, 54, 30);
    copyButton_.hide();
    QObject::connect(&copyButton_, &QToolButton::clicked, this,
                     [this] { model_.copyTranscript(); });
    changes_ = model_.onChange([this] {
        if (isVisible()) refresh();
    });
}

void RecordingPanel::present() {
    place();
    applyShape();
    show();
    raise();
    refresh();
}

void RecordingPanel::place() {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect usable = screen->availableGeometry();
    move(usable.center().x() - width() / 2, usable.bottom() - screenMargin - height());
}

// Without a compositor nothing is translucent: the window is cut to the capsule and has no shadow.
void RecordingPanel::applyShape() {
    if (isComposited_()) {
        clearMask();
        return;
    }
    QBitmap shape(size());
    shape.fill(Qt::color0);
    QPainter painter(&shape);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::color1);
    painter.drawRoundedRect(capsuleOf(rect()), capsuleRadius, capsuleRadius);
    painter.end();
    setMask(shape);
}

void RecordingPanel::refresh() {
    const bool offersCopy = model_.canCopyFromOverlay() && !model_.lastTranscript().empty();
    if (offersCopy && !copyButton_.isVisible()) {
        const auto colors = ThemePalette::of(model_.recordingTheme(), palette());
        copyButton_.setStyleSheet(
            QStringLiteral("QToolButton { color: %1; background: transparent; border: 1px solid "
                           "%1; border-radius: 15px; font-weight: 600; }")
                .arg(colors.accent.name()));
    }
    copyButton_.setVisible(offersCopy);
    if (toolTip() != qt(model_.message())) setToolTip(qt(model_.message()));
    acceptMouse(offersCopy);
    update();
}

void RecordingPanel::acceptMouse(bool accept) {
    if (windowHandle()) windowHandle()->setFlag(Qt::WindowTransparentForInput, !accept);
}

void RecordingPanel::paintEvent(QPaintEvent*) {
    const auto stage = model_.stage();
    const auto theme = model_.recordingTheme();
    const auto colors = ThemePalette::of(theme, palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF capsule = capsuleOf(rect());
    // Cut out of the desktop without a shadow, the capsule needs a line around it.
    const bool isCut = !mask().isEmpty();
    paintCapsule(painter, capsule, colors, isCut ? colors.secondaryInk : colors.border);
    paintStageIcon(painter, QRectF(capsule.left() + 18, capsule.top() + 15, 20, 20), stage,
                   ThemePalette::stateAccent(theme, stage, colors.accent));

    const double left = capsule.left() + 50;
    const double right = copyButton_.isVisible() ? copyButton_.x() - 10 : capsule.right() - 18;
    QFont font = this->font();
    font.setStyleHint(colors.fontDesign);
    if (colors.fontDesign == QFont::Serif) font.setFamily(QStringLiteral("serif"));
    font.setPixelSize(14);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(colors.ink);
    painter.drawText(QRectF(left, capsule.top() + 12, right - left, 20), Qt::AlignVCenter,
                     qt(title(stage)));

    font.setPixelSize(12);
    font.setWeight(QFont::Medium);
    painter.setFont(font);
    painter.setPen(colors.secondaryInk);
    const QFontMetricsF metrics(font);
    const QString message = qt(model_.message());
    if (stage == DictationStage::recording) {
        painter.drawText(QRectF(left, capsule.top() + 12, right - left, 20),
                         Qt::AlignVCenter | Qt::AlignRight, elapsedText(model_.elapsed()));
        painter.drawText(QRectF(left, capsule.top() + 31, right - left, 16), Qt::AlignVCenter,
                         metrics.elidedText(message, Qt::ElideRight, right - left));
        paintMeter(painter, QPointF(left, capsule.top() + 57), model_.level(), colors.accent);
        painter.setPen(colors.secondaryInk);
        painter.drawText(QRectF(left, capsule.top() + 49, right - left, 16),
                         Qt::AlignVCenter | Qt::AlignRight, QStringLiteral("Esc to cancel"));
    } else if (usesTwoLines(stage)) {
        painter.drawText(QRectF(left, capsule.top() + 32, right - left, 36),
                         Qt::AlignTop | Qt::TextWordWrap, message);
    } else {
        painter.drawText(QRectF(left, capsule.top() + 34, right - left, 18), Qt::AlignVCenter,
                         metrics.elidedText(message, Qt::ElideRight, right - left));
    }
}

}  // namespace quorvi
