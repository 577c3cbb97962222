#include "Quorvi/ui/updates/UpdateSettings.h"

#include "Quorvi/system/updates/AppUpdater.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

UpdateSettings::UpdateSettings(AppUpdater& updater)
    : Card(tr("App updates"), "arrow.down.circle"),
      updater_(updater),
      automatic_(new Switch(tr("Automatically check for updates"))) {
    content().addWidget(automatic_);
    content().addWidget(
        secondaryText(tr("New releases are downloaded securely. Quorvi will ask "
                         "before installing and relaunching.")));
    auto* check = button(tr("Check for Updates…"));
    auto* version =
        row({secondaryText(QStringLiteral("Quorvi ") + qt(updater_.currentVersion())), check});
    version->setStretch(0, 1);
    content().addLayout(version);

    automatic_->show(updater_.automaticChecks());
    connect(automatic_, &QCheckBox::toggled, this,
            [this](bool on) { updater_.setAutomaticChecks(on); });
    connect(check, &QPushButton::clicked, this, [this] { updater_.check(); });
    changes_ = updater_.onChange([this] { automatic_->show(updater_.automaticChecks()); });
}

}  // namespace quorvi
