#include "Quorvi/ui/settings/AccountSyncSettings.h"

#include <QLocale>
#include <utility>

#include "Quorvi/platform/CloudAccess.h"
#include "Quorvi/platform/SyncControl.h"
#include "Quorvi/settings/Settings.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Moment.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/settings/CloudComputersList.h"
#include "Quorvi/ui/settings/CloudPlaceSettings.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/Spinner.h"

namespace quorvi {

AccountSyncSettings::AccountSyncSettings(SyncControl& sync, CloudAccess& cloud,
                                         Preferences& preferences, Scheduler& scheduler)
    : Card(tr("Account & sync"), "icloud"),
      sync_(sync),
      cloud_(cloud),
      preferences_(preferences),
      enabled_(new Switch(tr("Sync with my Apple Account"))),
      choice_(new CloudPlaceSettings(cloud, preferences, scheduler)),
      working_(new Spinner),
      place_(bodyText()),
      status_(bodyText()),
      now_(button(tr("Sync now"))),
      check_(button(tr("Check"))),
      cancel_(button(tr("Cancel"))),
      checking_(new Spinner),
      result_(bodyText()),
      lastSynced_(secondaryText()),
      computers_(new CloudComputersList(cloud, scheduler)),
      tasks_(scheduler) {
    content().addWidget(enabled_);
    content().addWidget(secondaryText(
        tr("Settings, corrections, retained history and usage sync privately between Macs signed "
           "into the same iCloud account. Offline changes are saved and sent when you "
           "reconnect.")));
    content().addWidget(choice_);
    content().addWidget(divider());
    content().addWidget(place_);
    auto* line = row({working_, status_, now_});
    line->setStretch(1, 1);
    content().addLayout(line);
    content().addWidget(lastSynced_);
    addCheck();
    content().addWidget(computers_);
    content().addWidget(
        secondaryText(tr("Microphone and Accessibility permissions must be granted separately on "
                         "each Mac. Audio recordings are never synced.")));
    connect(enabled_, &QCheckBox::toggled, this, [this](bool on) {
        sync_.setEnabled(on);
        refresh();
    });
    connect(now_, &QPushButton::clicked, this, [this] { sync_.syncNow(); });
    choice_->onChosen = [this] {
        result_->clear();
        // With a new password the same server may let us in.
        sync_.syncNow();
    };
    refresh();
    changes_ = sync_.onChange([this] { refresh(); });
    preferenceChanges_ =
        Settings(preferences).onChange({&setting::cloudDatabase}, [this] { refresh(); });
}

void AccountSyncSettings::addCheck() {
    check_->setAccessibleName(tr("Check where the data are shared"));
    cancel_->setAccessibleName(tr("Cancel the check"));
    auto* line = row({check_, cancel_, checking_, result_});
    line->setStretch(3, 1);
    content().addLayout(line);
    connect(check_, &QPushButton::clicked, this, [this] { startCheck(); });
    connect(cancel_, &QPushButton::clicked, this, [this] { running_.cancel(); });
}

CloudAddress AccountSyncSettings::address() const {
    return CloudAddress::of(preferences_.string(setting::cloudDatabase.key()).value_or(""));
}

QString AccountSyncSettings::placeText() const {
    const auto where = address();
    switch (where.place) {
        case CloudPlace::thisComputer:
            return {};  // the choice says it
        case CloudPlace::sharedFolder:
            return tr("Shared folder: %1").arg(where.folder);
        case CloudPlace::server:
            break;
    }
    return tr("Server: %1").arg(where.shortServer());
}

// A sign-in means something else for each kind of cloud.
QString AccountSyncSettings::sentence(const Message& message) const {
    if (!message.is(Sentence::syncSignIn)) return shown(message);
    switch (address().place) {
        case CloudPlace::thisComputer:
            return tr("Quorvi's own folder can't be used. Check disk space and folder access.");
        case CloudPlace::sharedFolder:
            return tr(
                "The shared folder can't be used. Check that it exists and that you may write "
                "to it, or choose another folder.");
        case CloudPlace::server:
            break;
    }
    return tr(
        "The server does not let you in. Check its address and the user, and enter the "
        "password again.");
}

void AccountSyncSettings::refresh() {
    enabled_->show(sync_.enabled());
    choice_->refresh();
    choice_->setEnabled(!isChecking_);
    working_->setVisible(sync_.working());
    place_->setText(placeText());
    place_->setVisible(!place_->text().isEmpty());
    status_->setText(sentence(sync_.status()));
    now_->setEnabled(sync_.enabled() && !sync_.working());
    check_->setVisible(!isChecking_);
    cancel_->setVisible(isChecking_);
    checking_->setVisible(isChecking_);
    const auto last = sync_.lastSynced();
    lastSynced_->setVisible(last.has_value());
    if (last)
        lastSynced_->setText(tr("Last synced %1 · %2 pending")
                                 .arg(moment(*last), QLocale().toString(static_cast<qulonglong>(
                                                         sync_.pendingCount()))));
    if (isVisible()) refreshComputers();
}

void AccountSyncSettings::showEvent(QShowEvent* event) {
    Card::showEvent(event);
    listed_.clear();
    refreshComputers();
}

// Reads the folder when something may have been written there.
void AccountSyncSettings::refreshComputers() {
    const auto last = sync_.lastSynced();
    auto now =
        address().text() + ' ' + std::to_string(last ? last->secondsSinceReferenceDate : 0.0);
    if (now == listed_) return;
    listed_ = std::move(now);
    computers_->refresh();
}

void AccountSyncSettings::startCheck() {
    isChecking_ = true;
    result_->setText(tr("Writing something and reading it back…"));
    refresh();
    cancel_->setFocus();
    running_ = tasks_.start([this](std::stop_token stop) { return check(std::move(stop)); });
}

Task<void> AccountSyncSettings::check(std::stop_token stop) {
    QString text;
    try {
        auto checking = cloud_.check(std::move(stop));
        const auto problem = co_await checking;
        text = problem ? sentence(*problem) : tr("It works: data can be written and read back.");
    } catch (const Cancelled&) {
        text = QString();
    }
    isChecking_ = false;
    result_->setText(text);
    const bool hadFocus = cancel_->hasFocus();
    refresh();
    if (hadFocus) check_->setFocus();
}

}  // namespace quorvi
