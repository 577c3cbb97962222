#include "Quorvi/ui/settings/GeneralSettings.h"

#include <QShowEvent>

#include "Quorvi/system/LaunchAtLoginController.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

GeneralSettings::GeneralSettings(LaunchAtLoginController& loginItem)
    : Card(tr("General"), "gearshape"),
      loginItem_(loginItem),
      launch_(new Switch(tr("Launch Quorvi at login"))),
      message_(captionText()),
      open_(button(tr("Open Login Items"))) {
    content().addWidget(launch_);
    content().addWidget(message_);
    content().addLayout(row({open_, nullptr}));
    connect(launch_, &QCheckBox::toggled, this, [this](bool on) { loginItem_.setEnabled(on); });
    connect(open_, &QPushButton::clicked, this, [this] { loginItem_.openLoginItems(); });
    refresh();
    changes_ = loginItem_.onChange([this] { refresh(); });
}

void GeneralSettings::showEvent(QShowEvent* event) {
    Card::showEvent(event);
    loginItem_.refresh();
}

void GeneralSettings::refresh() {
    launch_->show(loginItem_.isEnabled());
    message_->setText(shown(loginItem_.message()));
    message_->setVisible(!loginItem_.message().isEmpty());
    open_->setVisible(loginItem_.requiresApproval());
}

}  // namespace quorvi
