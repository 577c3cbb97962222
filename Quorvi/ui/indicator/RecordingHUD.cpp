#include "Quorvi/ui/indicator/RecordingHUD.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/StageIcon.h"

namespace quorvi {

namespace {

constexpr int titleSize = 14;
constexpr int messageSize = 12;
constexpr int hintSize = 11;

void paintShadow(QPainter& painter, const QRectF& capsule) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 4));
    for (int spread = RecordingHUD::shadowMargin - 1; spread >= 0; --spread) {
        const double radius = RecordingHUD::cornerRadius + spread;
        painter.drawRoundedRect(capsule.adjusted(-spread, 1 - spread, spread, spread), radius,
                                radius);
    }
}

void setInk(QWidget* widget, const QColor& ink) {
    auto palette = widget->palette();
    palette.setColor(QPalette::WindowText, ink);
    widget->setPalette(palette);
}

}  // namespace

RecordingHUD::RecordingHUD(QWidget* parent)
    : QWidget(parent),
      sign_(new StageSign(this)),
      title_(new HeadingLabel({}, TextStyle::body)),
      time_(new HudTime(this)),
      message_(new HudText(this)),
      recordingRow_(new QWidget(this)),
      meter_(new LevelMeter(recordingRow_)),
      hint_(new QLabel(tr("Esc to cancel"), recordingRow_)),
      copy_(new HudButton(&paintCopySign, this)),
      retry_(new HudButton(&paintRetrySign, this)),
      update_(new HudButton(&paintDownloadSign, recordingRow_)) {
    setAccessibleName(tr("Quorvi dictation"));
    time_->setAccessibleName(tr("Recording time"));
    copy_->setToolTip(tr("Copy transcript"));
    copy_->setAccessibleName(tr("Copy transcript"));
    QObject::connect(copy_, &QAbstractButton::clicked, this, [this] {
        if (values_.onCopy) values_.onCopy();
    });
    retry_->setToolTip(tr("Try again"));
    retry_->setAccessibleName(tr("Try again"));
    QObject::connect(retry_, &QAbstractButton::clicked, this, [this] {
        if (values_.onRetry) values_.onRetry();
    });
    QObject::connect(update_, &QAbstractButton::clicked, this, [this] {
        if (values_.onUpdate) values_.onUpdate();
    });
    title_->setWordWrap(false);
    arrange();
    color();
    showStage();
    showElapsed();
    showButtons();
}

void RecordingHUD::arrange() {
    auto* heading = new QHBoxLayout;
    heading->setSpacing(8);
    heading->addWidget(title_, 1);
    heading->addWidget(time_);
    auto* row = new QHBoxLayout(recordingRow_);
    row->setContentsMargins(0, 1, 0, 0);
    row->setSpacing(10);
    row->addWidget(meter_);
    row->addWidget(hint_);
    row->addStretch(1);
    row->addWidget(update_);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addStretch(1);
    texts->addLayout(heading);
    texts->addWidget(message_);
    texts->addWidget(recordingRow_);
    texts->addStretch(1);
    auto* all = new QHBoxLayout(this);
    all->setContentsMargins(shadowMargin + 18, shadowMargin + 4, shadowMargin + 16,
                            shadowMargin + 4);
    all->setSpacing(13);
    all->addWidget(sign_);
    all->addLayout(texts, 1);
    all->addWidget(copy_);
    all->addWidget(retry_);
    setFixedSize(panelSize(values_.stage));
}

void RecordingHUD::setValues(Values values) {
    const auto before = std::exchange(values_, std::move(values));
    if (before.theme != values_.theme) color();
    if (before.stage != values_.stage || before.message != values_.message) showStage();
    if (before.stage != values_.stage || std::floor(before.elapsed) != std::floor(values_.elapsed))
        showElapsed();
    showButtons();
    meter_->setLevel(values_.level);
}

void RecordingHUD::setCutOut(bool cutOut) {
    if (cutOut_ == cutOut) return;
    cutOut_ = cutOut;
    surface_ = {};
    update();
}

QSize RecordingHUD::contentSize(DictationStage) {
    return {300, 76};
}

QSize RecordingHUD::panelSize(DictationStage stage) {
    return contentSize(stage).grownBy({shadowMargin, shadowMargin, shadowMargin, shadowMargin});
}

bool RecordingHUD::usesTwoLines(DictationStage stage) {
    return stage == DictationStage::failure || stage == DictationStage::idle ||
           stage == DictationStage::clipboard || stage == DictationStage::learned;
}

QString RecordingHUD::elapsedText(double seconds) {
    const int whole = static_cast<int>(seconds);
    return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}

void RecordingHUD::color() {
    colors_ =
        ThemePalette::of(values_.theme, parentWidget() ? parentWidget()->palette() : palette());
    title_->setFont(colors_.font(font(), titleSize, QFont::DemiBold));
    time_->setFont(colors_.font(font(), titleSize - 1, QFont::Medium));
    message_->setFont(colors_.font(font(), messageSize, QFont::Medium));
    hint_->setFont(colors_.font(font(), hintSize, QFont::Normal));
    update_->setFont(colors_.font(font(), hintSize, QFont::DemiBold));
    setInk(title_, colors_.ink);
    for (QWidget* quiet : {static_cast<QWidget*>(time_), static_cast<QWidget*>(message_),
                           static_cast<QWidget*>(hint_)})
        setInk(quiet, colors_.secondaryInk);
    meter_->setColor(colors_.accent);
    copy_->setColors(colors_);
    retry_->setColors(colors_);
    update_->setColors(colors_);
    sign_->show(values_.stage, colors_);
    surface_ = {};
    update();
}

void RecordingHUD::showStage() {
    const bool recording = values_.stage == DictationStage::recording;
    sign_->show(values_.stage, colors_);
    title_->setText(shown(title(values_.stage)));
    message_->setText(values_.message);
    message_->setLineLimit(usesTwoLines(values_.stage) ? 2 : 1);
    message_->setVisible(!values_.message.isEmpty());
    setToolTip(values_.message);
    time_->setVisible(recording);
    recordingRow_->setVisible(recording);
}

void RecordingHUD::showElapsed() {
    if (values_.stage != DictationStage::recording) return;
    time_->setText(elapsedText(values_.elapsed));
    const int whole = static_cast<int>(values_.elapsed);
    time_->setAccessibleDescription(tr("%1 seconds", nullptr, whole).arg(whole));
}

void RecordingHUD::showButtons() {
    hint_->setVisible(values_.hasEscape);
    copy_->setVisible(static_cast<bool>(values_.onCopy));
    retry_->setVisible(static_cast<bool>(values_.onRetry));
    const bool offersUpdate = values_.onUpdate && values_.updateVersion;
    if (offersUpdate) {
        const auto text = tr("Update %1").arg(*values_.updateVersion);
        if (update_->text() != text) update_->setText(text);
    }
    update_->setVisible(offersUpdate);
}

void RecordingHUD::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) color();
}

void RecordingHUD::renderSurface() {
    surface_ = QPixmap(size() * devicePixelRatioF());
    surface_.setDevicePixelRatio(devicePixelRatioF());
    surface_.fill(Qt::transparent);
    QPainter painter(&surface_);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto capsule =
        QRectF(rect()).adjusted(shadowMargin, shadowMargin, -shadowMargin, -shadowMargin);
    if (!cutOut_) paintShadow(painter, capsule);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    QLinearGradient surface(mirrored ? capsule.topRight() : capsule.topLeft(),
                            mirrored ? capsule.bottomLeft() : capsule.bottomRight());
    surface.setColorAt(0, colors_.surfaceTop);
    surface.setColorAt(1, colors_.surfaceBottom);
    painter.setPen(Qt::NoPen);
    painter.setBrush(surface);
    painter.drawRoundedRect(capsule, cornerRadius, cornerRadius);
    painter.setBrush(colors_.wash);
    painter.setPen(QPen(cutOut_ ? colors_.secondaryInk : colors_.border, 1));
    painter.drawRoundedRect(capsule.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius - 0.5,
                            cornerRadius - 0.5);
}

void RecordingHUD::paintEvent(QPaintEvent* event) {
    if (surface_.isNull() || surface_.devicePixelRatio() != devicePixelRatioF()) renderSurface();
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.drawPixmap(0, 0, surface_);
}

}  // namespace quorvi
