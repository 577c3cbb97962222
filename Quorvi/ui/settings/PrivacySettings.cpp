#include "Quorvi/ui/settings/PrivacySettings.h"

#include <utility>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

PrivacySettings::PrivacySettings(AppModel& model, std::function<bool(PrivacyPane)> hasSettingsFor)
    : Card(tr("Privacy"), "hand.raised"),
      model_(model),
      hasSettingsFor_(std::move(hasSettingsFor)),
      keep_(new Switch(tr("Keep a failed recording in memory for ten minutes"))) {
    content().addWidget(secondaryText(
        tr("Audio uses your Mac’s default input. Dictations stop at 3 minutes. Local audio files "
           "are deleted after recording; retained text history and usage statistics sync through "
           "your private iCloud account when enabled. Configure retention above. Cloud processing "
           "follows your API account’s data settings.")));
    content().addWidget(secondaryText(
        tr("When Quorvi uses Paste, it briefly places the transcript on the clipboard and then "
           "restores it. Clipboard managers may retain a copy.")));
    content().addWidget(divider());
    content().addWidget(keep_);
    content().addWidget(captionText(
        tr("If the speech service or the network fails, you can try again instead of dictating "
           "anew. The recording is never written to a disk, and gone when the screen is locked.")));
    connect(keep_, &QCheckBox::toggled, this,
            [this](bool on) { model_.settings().set(setting::keepFailedRecording, on); });
    addPermission(tr("Microphone"), PrivacyPane::microphone,
                  [this] { return model_.microphoneAllowed(); });
    addPermission(tr("Accessibility"), PrivacyPane::accessibility,
                  [this] { return model_.accessibilityAllowed(); });
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
}

void PrivacySettings::addPermission(const QString& title, PrivacyPane pane,
                                    std::function<bool()> granted) {
    auto* symbol = new SymbolLabel("circle", 20, ColorRole::secondary);
    auto* label = bodyText(title);
    auto* manage = button(tr("Manage"));
    manage->setAccessibleName(tr("Manage %1").arg(title));
    connect(manage, &QPushButton::clicked, this, [this, pane] { model_.openPrivacy(pane); });
    content().addWidget(divider());
    auto* line = row({symbol, label, manage});
    line->setStretch(1, 1);
    content().addLayout(line);
    permissions_.push_back({title, symbol, label, manage, pane, std::move(granted)});
}

void PrivacySettings::refresh() {
    keep_->show(model_.settings().get(setting::keepFailedRecording));
    for (auto& permission : permissions_) {
        permission.manage->setVisible(!hasSettingsFor_ || hasSettingsFor_(permission.pane));
        const bool granted = permission.granted();
        permission.symbol->setSymbol(granted ? "checkmark.circle.fill" : "circle",
                                     granted ? ColorRole::success : ColorRole::secondary);
        permission.label->setAccessibleName(
            (granted ? tr("%1: allowed") : tr("%1: not allowed")).arg(permission.title));
    }
}

}  // namespace quorvi
