#include "Quorvi/ui/status/StatusItem.h"

#include <QAction>
#include <QCursor>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <utility>

#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/translations/ShownShortcut.h"
#include "Quorvi/ui/widgets/StageIcon.h"

namespace quorvi {

namespace {

QIcon stageIcon(DictationStage stage) {
    // Trays are dark or light; a mid grey is visible on both.
    const QColor color =
        stage == DictationStage::recording ? QColor(0xE0, 0x3A, 0x36) : QColor(0xA8, 0xB0, 0xBA);
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

// Escapes the mnemonic character.
QString asMenuText(QString text) {
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

}  // namespace

StatusItem::StatusItem(AppModel& model, Actions actions)
    : model_(model), actions_(std::move(actions)) {
    icon_.setToolTip(tr("Quorvi — multilingual dictation"));
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

void StatusItem::refresh() {
    const Shown now{model_.stage(),
                    model_.mode(),
                    shown(model_.shortcut()),
                    !model_.lastTranscript().empty(),
                    model_.canRestoreClipboard(),
                    model_.canRetry()};
    if (shown_ == now) return;
    if (!shown_ || shown_->stage != now.stage) icon_.setIcon(stageIcon(now.stage));
    shown_ = now;
    rebuildMenu();
}

QAction* StatusItem::add(const QString& text, std::function<void()> effect) {
    auto* action = menu_.addAction(asMenuText(text));
    // Queued, since an entry may change the stage and so rebuild this menu.
    QObject::connect(
        action, &QAction::triggered, &menu_, [effect = std::move(effect)] { effect(); },
        Qt::QueuedConnection);
    return action;
}

void StatusItem::addLine(const QString& text) {
    menu_.addAction(asMenuText(text))->setEnabled(false);
}

void StatusItem::open(WindowPage page) {
    model_.setSelectedPage(page);
    actions_.openWindow();
}

void StatusItem::rebuildMenu() {
    const auto stage = model_.stage();
    menu_.clear();
    menu_.setTitle(QStringLiteral("Quorvi: ") + shown(title(stage)));
    addLine(QStringLiteral("Quorvi · ") + shown(title(stage)));
    if (model_.shortcutChoice().desktop().isOffered)
        addLine(shown(model_.shortcut()) + QStringLiteral(" · ") + shown(title(model_.mode())));
    menu_.addSeparator();
    if (stage == DictationStage::recording) add(tr("Stop & insert"), [this] { model_.finish(); });
    if (isActive(stage)) add(tr("Cancel dictation"), [this] { model_.cancel(); });
    add(tr("Open Quorvi…"), [this] { actions_.openWindow(); });
    add(tr("History…"), [this] { open(WindowPage::history); });
    add(tr("Insights…"), [this] { open(WindowPage::insights); });
    add(tr("Settings…"), [this] { open(WindowPage::settings); });
    add(tr("Copy last transcript"), [this] {
        model_.copyTranscript();
    })->setEnabled(!model_.lastTranscript().empty());
    if (model_.canRetry()) add(tr("Try again"), [this] { model_.retry(); });
    if (model_.canRestoreClipboard())
        add(tr("Restore my clipboard"), [this] { model_.restoreClipboard(); });
    add(tr("Reset dictation"), [this] { model_.resetDictation(); });
    menu_.addSeparator();
    add(tr("Check for Updates…"), [this] { actions_.checkForUpdates(); });
    add(tr("Quit Quorvi"), [this] { actions_.quit(); })->setShortcut(QKeySequence::Quit);
}

}  // namespace quorvi
