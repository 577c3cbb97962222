#include "Quorvi/ui/StatusItem.h"

#include <QAction>
#include <QCursor>
#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QString>
#include <utility>

#include "Quorvi/ui/indicator/StageIcon.h"

namespace quorvi {

namespace {

QString qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QIcon stageIcon(DictationStage stage) {
    const bool recording = stage == DictationStage::recording;
    // Trays are dark on most desktops and light on some; a mid grey is seen on both.
    const QColor color = recording ? QColor(0xE0, 0x3A, 0x36) : QColor(0xA8, 0xB0, 0xBA);
    QIcon icon;
    for (int size : {16, 22, 24, 32, 48}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        const QRectF bounds(0, 0, size, size);
        if (isActive(stage))
            paintStageIcon(painter, bounds, stage, color);
        else
            paintWaveform(painter, bounds, color);
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace

StatusItem::StatusItem(AppModel& model, std::function<void()> quit)
    : model_(model), quit_(std::move(quit)) {
    icon_.setToolTip(QStringLiteral("Quorvi — multilingual dictation"));
    icon_.setContextMenu(&menu_);
    QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                     [this](QSystemTrayIcon::ActivationReason reason) { showMenu(reason); });
    refresh();
    icon_.show();
    changes_ = model_.onChange([this] { refresh(); });
}

void StatusItem::showMenu(QSystemTrayIcon::ActivationReason reason) {
    if (reason == QSystemTrayIcon::Trigger) menu_.popup(QCursor::pos());
}

void StatusItem::welcome() {
    icon_.showMessage(QStringLiteral("Welcome to Quorvi"),
                      QStringLiteral("There is no OpenAI API key in your keyring yet. Put one there "
                                     "with: quorvi --store-key"));
}

void StatusItem::refresh() {
    const Shown now{model_.stage(), model_.mode(), model_.shortcut().label,
                    !model_.lastTranscript().empty()};
    if (shown_ == now) return;
    if (!shown_ || shown_->stage != now.stage) icon_.setIcon(stageIcon(now.stage));
    shown_ = now;
    rebuildMenu();
}

void StatusItem::rebuildMenu() {
    menu_.clear();
    const auto stage = model_.stage();
    const auto line = [this](const QString& text) { menu_.addAction(text)->setEnabled(false); };
    const auto action = [this](const char* text, std::function<void()> effect) {
        auto* added = menu_.addAction(QString::fromUtf8(text));
        QObject::connect(added, &QAction::triggered, added,
                         [effect = std::move(effect)] { effect(); });
        return added;
    };
    line(QStringLiteral("Quorvi · ") + qt(title(stage)));
    line(qt(model_.shortcut().label) + QStringLiteral(" · ") + qt(title(model_.mode())));
    menu_.addSeparator();
    if (stage == DictationStage::recording) action("Stop && insert", [this] { model_.finish(); });
    if (isActive(stage)) action("Cancel dictation", [this] { model_.cancel(); });
    action("Copy last transcript", [this] {
        model_.copyTranscript();
    })->setEnabled(!model_.lastTranscript().empty());
    action("Reset dictation", [this] { model_.resetDictation(); });
    menu_.addSeparator();
    action("Check for Updates…", [this] {
        if (checkForUpdates) checkForUpdates();
    });
    action("Quit Quorvi", quit_);
}

}  // namespace quorvi
