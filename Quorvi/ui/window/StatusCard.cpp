#include "Quorvi/ui/window/StatusCard.h"

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/translations/ShownShortcut.h"

namespace quorvi {

namespace {

QString clock(double elapsed) {
    const int seconds = static_cast<int>(elapsed);
    return QString::asprintf("%d:%02d", seconds / 60, seconds % 60);
}

}  // namespace

StatusCard::StatusCard(AppModel& model) : model_(model) {
    build();
    connect(change_, &QPushButton::clicked, this, [this] { model_.beginShortcutCapture(); });
    connect(keep_, &QPushButton::clicked, this, [this] { model_.endShortcutCapture(); });
    connect(stop_, &QPushButton::clicked, this, [this] { model_.finish(); });
    connect(cancel_, &QPushButton::clicked, this, [this] { model_.cancel(); });
    connect(retry_, &QPushButton::clicked, this, [this] { model_.retry(); });
    connect(discard_, &QPushButton::clicked, this, [this] { model_.discardFailed(); });
    connect(test_, &QPushButton::clicked, this, [this] { model_.armInsertionTest(); });
    connect(cancelTest_, &QPushButton::clicked, this, [this] { model_.cancel(); });
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
}

void StatusCard::build() {
    symbol_ = new SymbolLabel("checkmark.circle.fill", 24, ColorRole::success);
    heading_ = headingText({});
    auto* top = row({symbol_, heading_});
    top->setStretch(1, 1);
    content().addLayout(top);
    content().addWidget(secondaryText(tr("Automatic language detection")));
    explanation_ = bodyText(
        tr("Click a text field in any app, then use your shortcut. You can close this window; "
           "Quorvi keeps running in the menu bar."));
    content().addWidget(explanation_);
    message_ = bodyText();
    content().addWidget(message_);

    failed_ = new QWidget;
    retry_ = button(tr("Try again"), ButtonKind::primary, "arrow.counterclockwise");
    discard_ = button(tr("Discard"));
    discard_->setAccessibleName(tr("Discard the recording"));
    auto* failedRow = row({nullptr, discard_, retry_});
    failedRow->setContentsMargins(0, 0, 0, 0);
    failed_->setLayout(failedRow);
    content().addWidget(failed_);

    recording_ = new QWidget;
    elapsed_ = new QLabel;
    elapsed_->setFont(textFont(TextStyle::figure));
    elapsed_->setAccessibleName(tr("Recording time"));
    stop_ = button(tr("Stop && insert"), ButtonKind::primary);
    stop_->setAccessibleName(tr("Stop & insert"));
    cancel_ = button(tr("Cancel"));
    auto* recordingRow = row({elapsed_, nullptr, cancel_, stop_});
    recordingRow->setContentsMargins(0, 0, 0, 0);
    recording_->setLayout(recordingRow);
    content().addWidget(recording_);

    content().addWidget(divider());
    shortcut_ = bodyText();
    change_ = button(tr("Change shortcut"));
    keep_ = button(tr("Cancel"));
    keep_->setAccessibleName(tr("Keep the shortcut"));
    auto* shortcutRow =
        row({new SymbolLabel("keyboard", 18, ColorRole::secondary), shortcut_, change_, keep_});
    shortcutRow->setStretch(1, 1);
    content().addLayout(shortcutRow);

    content().addWidget(divider());
    testNote_ = captionText(
        tr("Click a text field in another app during the 10-second countdown. Quorvi will paste a "
           "short sample without recording or an API request."));
    test_ = button(tr("Test paste"), ButtonKind::regular, "doc.on.clipboard");
    cancelTest_ = button(tr("Cancel test"));
    auto* testRow = row({testNote_, test_, cancelTest_});
    testRow->setStretch(0, 1);
    testRow->setSpacing(spacing::large);
    content().addLayout(testRow);
}

void StatusCard::refresh() {
    const bool ready = model_.ready();
    heading_->setText(ready ? tr("Ready when you are") : tr("Complete setup to start"));
    setAccessibleName(heading_->text());
    symbol_->setSymbol(ready ? "checkmark.circle.fill" : "circle.dashed",
                       ready ? ColorRole::success : ColorRole::secondary);
    explanation_->setVisible(ready);
    // Until there is news, the explanation says the same.
    message_->setVisible(!model_.hasNoNews());
    message_->setText(shown(model_.message()));
    failed_->setVisible(model_.canRetry());
    refreshRecording();
    refreshShortcut();
    const bool armed = model_.insertionTestArmed();
    test_->setVisible(!armed);
    test_->setEnabled(!isActive(model_.stage()));
    cancelTest_->setVisible(armed);
}

void StatusCard::refreshRecording() {
    const bool recording = model_.stage() == DictationStage::recording;
    recording_->setVisible(recording);
    if (recording) elapsed_->setText(clock(model_.elapsed()));
}

void StatusCard::refreshShortcut() {
    const bool choosing = model_.isChoosingShortcut();
    const bool isOffered = model_.shortcutChoice().desktop().isOffered;
    if (!isOffered)
        shortcut_->setText(shown(say::desktopHasNoShortcuts()));
    else if (choosing)
        shortcut_->setText(
            tr("Press the new shortcut. Esc keeps %1.").arg(shown(model_.shortcut())));
    else
        shortcut_->setText(tr("Shortcut: %1").arg(shown(model_.shortcut())));
    change_->setVisible(isOffered && !choosing);
    change_->setEnabled(!isActive(model_.stage()));
    keep_->setVisible(choosing);
}

}  // namespace quorvi
