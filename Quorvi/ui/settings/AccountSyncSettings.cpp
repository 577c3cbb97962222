#include "Quorvi/ui/settings/AccountSyncSettings.h"

#include <QDateTime>
#include <QLocale>

#include "Quorvi/platform/SyncControl.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/Spinner.h"

namespace quorvi {

namespace {

// A date with a short month name and a time without seconds, in the user's locale.
QString moment(Date date) {
    const QLocale locale;
    const auto time =
        QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(date.unixSeconds() * 1000));
    QString format = locale.dateFormat(QLocale::LongFormat);
    format.replace(QStringLiteral("dddd, "), QString());
    format.replace(QStringLiteral("dddd "), QString());
    format.replace(QStringLiteral("MMMM"), QStringLiteral("MMM"));
    return locale.toString(time.date(), format) + QStringLiteral(", ") +
           locale.toString(time.time(), QLocale::ShortFormat);
}

}  // namespace

AccountSyncSettings::AccountSyncSettings(SyncControl& sync)
    : Card(tr("Account & sync"), "icloud"),
      sync_(sync),
      enabled_(new Switch(tr("Sync with my Apple Account"))),
      working_(new Spinner),
      status_(bodyText()),
      now_(button(tr("Sync now"))),
      lastSynced_(secondaryText()) {
    content().addWidget(enabled_);
    content().addWidget(secondaryText(
        tr("Settings, corrections, retained history and usage sync privately between Macs signed "
           "into the same iCloud account. Offline changes are saved and sent when you "
           "reconnect.")));
    auto* line = row({working_, status_, now_});
    line->setStretch(1, 1);
    content().addLayout(line);
    content().addWidget(lastSynced_);
    content().addWidget(
        secondaryText(tr("Microphone and Accessibility permissions must be granted separately on "
                         "each Mac. Audio recordings are never synced.")));
    connect(enabled_, &QCheckBox::toggled, this, [this](bool on) {
        sync_.setEnabled(on);
        refresh();
    });
    connect(now_, &QPushButton::clicked, this, [this] { sync_.syncNow(); });
    refresh();
    changes_ = sync_.onChange([this] { refresh(); });
}

void AccountSyncSettings::refresh() {
    enabled_->show(sync_.enabled());
    working_->setVisible(sync_.working());
    status_->setText(shown(sync_.status()));
    now_->setEnabled(sync_.enabled() && !sync_.working());
    const auto last = sync_.lastSynced();
    lastSynced_->setVisible(last.has_value());
    if (last)
        lastSynced_->setText(tr("Last synced %1 · %2 pending")
                                 .arg(moment(*last), QLocale().toString(static_cast<qulonglong>(
                                                         sync_.pendingCount()))));
}

}  // namespace quorvi
