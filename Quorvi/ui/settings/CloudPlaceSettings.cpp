#include "Quorvi/ui/settings/CloudPlaceSettings.h"

#include <QFileDialog>
#include <utility>

#include "Quorvi/platform/CloudAccess.h"
#include "Quorvi/settings/Settings.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/Card.h"
#include "Quorvi/ui/widgets/LabelledRow.h"

namespace quorvi {

CloudPlaceSettings::CloudPlaceSettings(CloudAccess& cloud, Preferences& preferences,
                                       Scheduler& scheduler)
    : cloud_(cloud),
      preferences_(preferences),
      place_(new Picker(tr("Where your computers share the data"))),
      explanation_(captionText()),
      folderPart_(folderFields()),
      serverPart_(serverFields()),
      use_(button({})),
      problem_(bodyText()),
      tasks_(scheduler) {
    for (const auto& name :
         {tr("Only this computer"), tr("A shared folder"), tr("A PostgreSQL server")})
        place_->addItem(name);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    all->setSpacing(spacing::medium);
    all->addLayout(labelledRow(tr("Where your computers share the data"), {place_}));
    all->addWidget(explanation_);
    all->addWidget(folderPart_);
    all->addWidget(serverPart_);
    all->addLayout(row({use_, nullptr}));
    all->addWidget(problem_);
    connect(place_, &QComboBox::activated, this, [this] { showPlace(); });
    connect(use_, &QPushButton::clicked, this, [this] { use(); });
    show(present());
}

QWidget* CloudPlaceSettings::folderFields() {
    auto* part = new QWidget;
    auto* all = new QVBoxLayout(part);
    all->setContentsMargins({});
    auto* browse = button(tr("Browse…"));
    browse->setAccessibleName(tr("Browse for the folder"));
    folder_ =
        addLabelledField(*all, tr("Folder"), tr("The folder's path on this computer"), browse);
    connect(browse, &QPushButton::clicked, this, [this] { browseForFolder(); });
    return part;
}

QWidget* CloudPlaceSettings::serverFields() {
    auto* part = new QWidget;
    auto* all = new QVBoxLayout(part);
    all->setContentsMargins({});
    all->setSpacing(spacing::medium);
    server_ = addLabelledField(*all, tr("Server"), QStringLiteral("db.example.org/quorvi"));
    user_ = addLabelledField(*all, tr("User"), tr("The account on the server"));
    password_ = addLabelledField(*all, tr("Password"), tr("Empty leaves the stored one as it is"));
    password_->setEchoMode(QLineEdit::Password);
    password_->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData |
                                   Qt::ImhNoPredictiveText);
    auto* browse = button(tr("Browse…"));
    browse->setAccessibleName(tr("Browse for the certificate"));
    certificate_ = addLabelledField(*all, tr("Certificate of the server's authority (optional)"),
                                    tr("One that this computer trusts already"), browse);
    connect(browse, &QPushButton::clicked, this, [this] { browseForCertificate(); });
    return part;
}

CloudAddress CloudPlaceSettings::present() const {
    return CloudAddress::of(Settings(preferences_).get(setting::cloudDatabase));
}

CloudAddress CloudPlaceSettings::entered() const {
    return {static_cast<CloudPlace>(place_->currentIndex()), folder_->text(), server_->text(),
            user_->text(), certificate_->text()};
}

// The same place is not written in another way, which would be another cloud.
std::string CloudPlaceSettings::enteredAddress() const {
    return entered() == present() ? Settings(preferences_).get(setting::cloudDatabase)
                                  : entered().text();
}

void CloudPlaceSettings::refresh() {
    const auto address = Settings(preferences_).get(setting::cloudDatabase);
    if (address != shown_) show(CloudAddress::of(address));
}

void CloudPlaceSettings::show(const CloudAddress& address) {
    shown_ = Settings(preferences_).get(setting::cloudDatabase);
    place_->show(static_cast<int>(address.place));
    folder_->setText(address.folder);
    server_->setText(address.server);
    user_->setText(address.user);
    certificate_->setText(address.certificate);
    auto typed = password_->text();
    password_->setText({});  // unlike clear(), forgets what could be undone
    typed.fill(QChar());     // the field's own buffer, which is no longer shared
    showPlace();
}

void CloudPlaceSettings::showPlace() {
    const auto place = entered().place;
    folderPart_->setVisible(place == CloudPlace::sharedFolder);
    serverPart_->setVisible(place == CloudPlace::server);
    problem_->hide();
    const bool isPresent = present().place == place;
    use_->setVisible(place != CloudPlace::thisComputer || !isPresent);
    switch (place) {
        case CloudPlace::thisComputer:
            explanation_->setText(
                tr("The data stay on this computer. What is in a folder or on a "
                   "server stays there for the other computers."));
            use_->setText(tr("Keep the data on this computer only"));
            break;
        case CloudPlace::sharedFolder:
            explanation_->setText(
                tr("A folder that Syncthing, Nextcloud, Dropbox, NFS or the like keeps the same on "
                   "your computers. It must carry over all files and subfolders, in any order, and "
                   "never change or leave out any. Whoever can read the folder can read your "
                   "dictations."));
            use_->setText(tr("Use this folder"));
            break;
        case CloudPlace::server:
            explanation_->setText(
                tr("A database that was set up with quorvi-cloud-server. The password goes into "
                   "your keyring. The server must have a certificate that this computer trusts, "
                   "or that the authority below has signed."));
            use_->setText(tr("Use this server"));
            break;
    }
}

void CloudPlaceSettings::browseForFolder() {
    auto* dialog = new QFileDialog(this, tr("Choose the shared folder"), folder_->text());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::fileSelected, folder_, &QLineEdit::setText);
    dialog->open();
}

void CloudPlaceSettings::browseForCertificate() {
    auto* dialog = new QFileDialog(this, tr("Choose the certificate"), certificate_->text());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, certificate_, &QLineEdit::setText);
    dialog->open();
}

void CloudPlaceSettings::use() {
    const auto address = enteredAddress();
    const auto problem = cloud_.problem(address);
    problem_->setVisible(problem.has_value());
    if (problem) return problem_->setText(shown(*problem));
    if (entered().place == CloudPlace::server && !password_->text().isEmpty())
        tasks_.start([this, address](std::stop_token stop) {
            return storePassword(address, std::move(stop));
        });
    else
        choose(address);
}

// Before the server is used, so that it is there for the first connection.
Task<void> CloudPlaceSettings::storePassword(std::string address, std::stop_token stop) {
    const bool hadFocus = use_->hasFocus();
    use_->setEnabled(false);
    auto bytes = password_->text().toUtf8();
    Secret password(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    bytes.fill('\0');
    auto storing = cloud_.storePassword(address, std::move(password), std::move(stop));
    const bool isStored = co_await storing;
    use_->setEnabled(true);
    if (hadFocus) use_->setFocus();
    if (isStored) {
        choose(address);
    } else {
        problem_->setText(tr("The keyring did not take the password. Unlock it and try again."));
        problem_->show();
    }
}

void CloudPlaceSettings::choose(const std::string& address) {
    Settings settings(preferences_);
    if (address.empty())
        settings.reset(setting::cloudDatabase);
    else
        settings.set(setting::cloudDatabase, address);
    show(present());
    if (onChosen) onChosen();
}

}  // namespace quorvi
