#include "Quorvi/ui/settings/ApiKeySettings.h"

#include <QDesktopServices>
#include <QUrl>
#include <utility>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/platform/KeyStore.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

namespace {

constexpr auto keysPage = "https://platform.openai.com/api-keys";

}  // namespace

ApiKeySettings::ApiKeySettings(AppModel& model, KeyStore& keys, Scheduler& scheduler, bool isGiven)
    : Card(tr("API key"), "key"), model_(model), keys_(keys), isGiven_(isGiven), tasks_(scheduler) {
    build();
    connect(apiKey_, &QLineEdit::textChanged, this, [this] { refresh(); });
    connect(apiKey_, &QLineEdit::returnPressed, this, [this] { save(); });
    connect(save_, &QPushButton::clicked, this, [this] { save(); });
    connect(remove_, &QPushButton::clicked, this, [this] {
        tasks_.start([this](const std::stop_token&) { return model_.removeKey(); });
    });
    connect(sync_, &QCheckBox::toggled, this, [this](bool on) {
        tasks_.start([this, on](const std::stop_token&) { return changeSync(on); });
    });
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
    tasks_.start([this](const std::stop_token&) { return readSync(); });
}

void ApiKeySettings::build() {
    saved_ = new QWidget;
    auto* savedText = bodyText(tr("Saved"));
    savedText->setWordWrap(false);
    auto* savedRow =
        row({new SymbolLabel("checkmark.shield.fill", 18, ColorRole::success), savedText});
    savedRow->setContentsMargins(0, 0, 0, 0);
    saved_->setLayout(savedRow);
    header().addWidget(saved_);

    apiKey_ = new QLineEdit;
    apiKey_->setEchoMode(QLineEdit::Password);
    apiKey_->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData |
                                 Qt::ImhNoPredictiveText);
    save_ = button(tr("Save"), ButtonKind::primary);
    auto* keyRow = row({apiKey_, save_});
    keyRow->setStretch(0, 1);
    content().addLayout(keyRow);
    message_ = bodyText();
    get_ = button(tr("Get an API key ↗"), ButtonKind::link);
    connect(get_, &QPushButton::clicked, this,
            [] { QDesktopServices::openUrl(QUrl(QString::fromLatin1(keysPage))); });
    remove_ = button(tr("Remove key"), ButtonKind::destructive);
    content().addLayout(row({get_, nullptr, remove_}));
    sync_ = new Switch(tr("Sync API key through iCloud Keychain"));
    content().addWidget(sync_);
    note_ = captionText();
    content().addWidget(note_);
    content().addWidget(message_);
}

void ApiKeySettings::refresh() {
    const auto& choice = model_.speechService().choice();
    const bool isMain = choice.usesMainKey();
    setVisible(choice.takesKey());
    setEnabled(!isActive(model_.stage()));
    apiKey_->setAccessibleName(isMain ? tr("OpenAI API key") : tr("API key"));
    get_->setVisible(isMain);
    sync_->setVisible(isMain && !isGiven_);
    note_->setText(
        isGiven_ ? tr("The environment variable QUORVI_API_KEY gives the key until Quorvi is "
                      "started without that variable. What you change here counts until Quorvi "
                      "ends; the key in your keyring stays as it is.")
        : isMain ? tr("Your key stays in macOS Keychain. Recordings go directly to OpenAI for "
                      "transcription. API usage is billed to your OpenAI account.")
                 : tr("The key for %1. It stays in your keyring and is sent nowhere else.")
                       .arg(qt(choice.otherAddress())));
    saved_->setVisible(model_.hasKey());
    remove_->setVisible(model_.hasKey());
    apiKey_->setPlaceholderText(model_.hasKey() ? tr("Enter a replacement key")
                                                : tr("Paste your API key"));
    save_->setEnabled(!apiKey_->text().trimmed().isEmpty());
    message_->setText(shown(model_.keyMessage()));
    message_->setVisible(!model_.keyMessage().isEmpty());
}

void ApiKeySettings::save() {
    if (!save_->isEnabled()) return;
    auto bytes = apiKey_->text().toUtf8();
    std::string key(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    bytes.fill('\0');
    tasks_.start([this, &key](const std::stop_token&) { return storeKey(std::move(key)); });
}

// If storing fails, the field keeps the key for another try.
Task<void> ApiKeySettings::storeKey(std::string key) {
    auto saving = model_.saveKey(std::move(key));
    const bool stored = co_await saving;
    if (!stored) co_return;
    auto typed = apiKey_->text();
    apiKey_->setText({});  // unlike clear(), forgets what could be undone
    typed.fill(QChar());   // the field's own buffer, which is no longer shared
}

Task<void> ApiKeySettings::changeSync(bool on) {
    auto changing = model_.setKeySync(on);
    const bool done = co_await changing;
    if (!done) sync_->show(!on);
}

Task<void> ApiKeySettings::readSync() {
    auto reading = keys_.syncEnabled();
    const bool on = co_await reading;
    sync_->show(on);
}

}  // namespace quorvi
