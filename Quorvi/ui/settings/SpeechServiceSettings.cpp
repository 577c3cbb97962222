#include "Quorvi/ui/settings/SpeechServiceSettings.h"

#include <optional>
#include <utility>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/LabelledRow.h"
#include "Quorvi/ui/widgets/Spinner.h"
#include "QuorviCore/Error.h"

namespace quorvi {

SpeechServiceSettings::SpeechServiceSettings(AppModel& model, Scheduler& scheduler)
    : Card(tr("Speech service"), "waveform"),
      model_(model),
      kind_(new Picker(tr("Speech service"))),
      explanation_(captionText()),
      test_(button(tr("Test"))),
      cancel_(button(tr("Cancel"))),
      testing_(new Spinner),
      result_(bodyText()),
      tasks_(scheduler) {
    for (const auto& name : {tr("OpenAI"), tr("Another service"), tr("Offline (English)")})
        kind_->addItem(name);
    content().addLayout(labelledRow(tr("Turns speech into text"), {kind_}));
    kind_->setAccessibleName(tr("Speech service"));
    content().addWidget(explanation_);
    content().addWidget(otherService());
    test_->setAccessibleName(tr("Test the speech service"));
    cancel_->setAccessibleName(tr("Cancel the test"));
    auto* line = row({test_, cancel_, testing_, result_});
    line->setStretch(3, 1);
    content().addLayout(line);

    auto& choice = model_.speechService().choice();
    connect(kind_, &QComboBox::activated, this, [this, &choice](int index) {
        result_->clear();
        choice.choose(allSpeechServiceKinds[static_cast<std::size_t>(index)]);
    });
    // Not at each letter: the address decides which key is sent where.
    connect(address_, &QLineEdit::editingFinished, this, [this, &choice] {
        choice.setOtherAddress(address_->text().toStdString());
        refresh();
    });
    connect(otherModel_, &QLineEdit::editingFinished, this,
            [this, &choice] { choice.setOtherModel(otherModel_->text().trimmed().toStdString()); });
    connect(takesKey_, &QCheckBox::toggled, this,
            [&choice](bool on) { choice.setOtherTakesKey(on); });
    connect(test_, &QPushButton::clicked, this, [this] { startTest(); });
    connect(cancel_, &QPushButton::clicked, this, [this] { running_.cancel(); });
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
}

// How another service is reached.
QWidget* SpeechServiceSettings::otherService() {
    other_ = new QWidget;
    auto* all = new QVBoxLayout(other_);
    all->setContentsMargins({});
    all->setSpacing(spacing::medium);
    address_ = addLabelledField(*all, tr("Address"), QStringLiteral("https://speech.example.org"));
    otherModel_ = addLabelledField(*all, tr("Model (optional)"), tr("As the service calls it"));
    takesKey_ = new Switch(tr("The service needs an API key"));
    all->addWidget(takesKey_);
    return other_;
}

void SpeechServiceSettings::refresh() {
    const auto& service = model_.speechService();
    const auto& choice = service.choice();
    const auto kind = choice.kind();
    setEnabled(!isActive(model_.stage()));
    kind_->show(static_cast<int>(kind));
    kind_->setEnabled(!choice.isFixed());
    other_->setVisible(kind == SpeechServiceKind::other && !choice.isFixed());
    if (!address_->hasFocus()) address_->setText(qt(choice.otherAddress()));
    if (!otherModel_->hasFocus()) otherModel_->setText(qt(choice.otherModel()));
    takesKey_->show(choice.otherTakesKey());
    if (choice.isFixed())
        explanation_->setText(
            tr("The environment variable QUORVI_SERVICE sets it to %1 until Quorvi is started "
               "without that variable.")
                .arg(qt(choice.fixedAddress())));
    else if (kind == SpeechServiceKind::openAI)
        explanation_->setText(tr("Recordings go to api.openai.com with your API key."));
    else if (kind == SpeechServiceKind::other)
        explanation_->setText(
            tr("A service with the interface of OpenAI's speech-to-text API: your own server, or "
               "that of another provider. Its key is kept apart from the others."));
    else if (service.hasOffline())
        explanation_->setText(
            tr("Recordings stay on this computer, and no key is needed. English only, and good for "
               "short sentences. The recogniser runs while you dictate and five minutes longer."));
    else
        explanation_->setText(shown(say::offlineNotInstalled()));
    test_->setVisible(!isTesting_);
    cancel_->setVisible(isTesting_);
    testing_->setVisible(isTesting_);
}

void SpeechServiceSettings::startTest() {
    isTesting_ = true;
    result_->setText(tr("Waiting for the service…"));
    refresh();
    cancel_->setFocus();
    running_ = tasks_.start([this](std::stop_token stop) { return test(std::move(stop)); });
}

Task<void> SpeechServiceSettings::test(std::stop_token stop) {
    auto outcome = say::serviceTestPassed();
    bool isCancelled = false;
    try {
        auto testing = model_.testSpeechService(std::move(stop));
        co_await testing;
    } catch (const std::exception& error) {
        outcome = messageOf(error);
    } catch (const Cancelled&) {
        isCancelled = true;
    }
    isTesting_ = false;
    result_->setText(isCancelled ? QString() : shown(outcome));
    const bool hadFocus = cancel_->hasFocus();
    refresh();
    if (hadFocus) test_->setFocus();
}

}  // namespace quorvi
