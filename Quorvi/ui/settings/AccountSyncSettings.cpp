#include "Quorvi/ui/settings/AccountSyncSettings.h"

#include <QDateTime>
#include <QLocale>
#include <QUrl>

#include "Quorvi/platform/Preferences.h"
#include "Quorvi/platform/SyncControl.h"
#include "Quorvi/settings/Settings.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/Spinner.h"

namespace quorvi {

namespace {

constexpr std::string_view folderScheme = "folder:";

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

AccountSyncSettings::AccountSyncSettings(SyncControl& sync, const Preferences& preferences)
    : Card(tr("Account & sync"), "icloud"),
      sync_(sync),
      preferences_(preferences),
      enabled_(new Switch(tr("Sync with my Apple Account"))),
      working_(new Spinner),
      place_(bodyText()),
      status_(bodyText()),
      now_(button(tr("Sync now"))),
      lastSynced_(secondaryText()) {
    content().addWidget(enabled_);
    content().addWidget(secondaryText(
        tr("Settings, corrections, retained history and usage sync privately between Macs signed "
           "into the same iCloud account. Offline changes are saved and sent when you "
           "reconnect.")));
    content().addWidget(place_);
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

std::string AccountSyncSettings::address() const {
    return preferences_.string(setting::cloudDatabase.key()).value_or("");
}

AccountSyncSettings::Place AccountSyncSettings::place() const {
    const auto where = address();
    if (where.empty()) return Place::ownFolder;
    return where.starts_with(folderScheme) ? Place::sharedFolder : Place::server;
}

QString AccountSyncSettings::placeText() const {
    const auto where = QString::fromStdString(address());
    switch (place()) {
        case Place::ownFolder:
            return tr("Only this computer");
        case Place::sharedFolder:
            return tr("Shared folder: %1").arg(where.mid(folderScheme.size()));
        case Place::server:
            break;
    }
    // Without the user's name and the connection's options.
    const QUrl url(where);
    return tr("Server: %1").arg(url.host() + url.path());
}

// A sign-in means something else for each kind of cloud.
QString AccountSyncSettings::statusText() const {
    if (!sync_.status().is(Sentence::syncSignIn)) return shown(sync_.status());
    switch (place()) {
        case Place::ownFolder:
            return tr("Quorvi's own folder can't be used. Check disk space and folder access.");
        case Place::sharedFolder:
            return tr(
                "The shared folder can't be used. Check that it exists and that you may write "
                "to it, or choose another folder.");
        case Place::server:
            break;
    }
    return tr(
        "The server does not let you in. Check its address, and store its password: quorvi "
        "--store-cloud-password");
}

void AccountSyncSettings::refresh() {
    enabled_->show(sync_.enabled());
    working_->setVisible(sync_.working());
    place_->setText(placeText());
    status_->setText(statusText());
    now_->setEnabled(sync_.enabled() && !sync_.working());
    const auto last = sync_.lastSynced();
    lastSynced_->setVisible(last.has_value());
    if (last)
        lastSynced_->setText(tr("Last synced %1 · %2 pending")
                                 .arg(moment(*last), QLocale().toString(static_cast<qulonglong>(
                                                         sync_.pendingCount()))));
}

}  // namespace quorvi
