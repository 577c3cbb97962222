#include "Quorvi/ui/UpdateSettings.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace quorvi {

namespace {

// An arrow down in a circle, as high as the heading's text.
QPixmap downloadSymbol(int size, qreal ratio, const QColor& color) {
    QPixmap pixmap(QSize(size, size) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 18.0, size / 18.0);
    painter.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawEllipse(QPointF(9, 9), 7.8, 7.8);
    painter.drawLine(QPointF(9, 5), QPointF(9, 12.6));
    painter.drawPolyline(QPolygonF({QPointF(6, 9.8), QPointF(9, 12.8), QPointF(12, 9.8)}));
    return pixmap;
}

QLabel* secondary(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

}  // namespace

UpdateSettings::UpdateSettings(AppUpdater& updater)
    : updater_(updater),
      automatic_(QStringLiteral("Automatically check for updates")),
      check_(QStringLiteral("Check for Updates…")) {
    auto* title = new QLabel(QStringLiteral("App updates"));
    auto font = title->font();
    font.setBold(true);
    title->setFont(font);
    auto* symbol = new QLabel;
    const auto color = palette().color(QPalette::WindowText);
    symbol->setPixmap(downloadSymbol(title->sizeHint().height(), devicePixelRatioF(), color));
    auto* heading = new QHBoxLayout;
    heading->addWidget(symbol);
    heading->addWidget(title, 1);
    auto* version = new QHBoxLayout;
    version->addWidget(
        secondary(QStringLiteral("Quorvi ") + QString::fromStdString(updater_.currentVersion())),
        1);
    version->addWidget(&check_);
    auto* all = new QVBoxLayout(this);
    all->addLayout(heading);
    all->addWidget(&automatic_);
    all->addWidget(
        secondary(QStringLiteral("New releases are downloaded securely. Quorvi will ask "
                                 "before installing and relaunching.")));
    all->addLayout(version);

    automatic_.setChecked(updater_.automaticChecks());
    QObject::connect(&automatic_, &QCheckBox::toggled, this,
                     [this](bool on) { updater_.setAutomaticChecks(on); });
    QObject::connect(&check_, &QPushButton::clicked, this, [this] { updater_.check(); });
    changes_ = updater_.onChange([this] { automatic_.setChecked(updater_.automaticChecks()); });
}

}  // namespace quorvi
