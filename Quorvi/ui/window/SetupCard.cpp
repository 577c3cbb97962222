#include "Quorvi/ui/window/SetupCard.h"

#include <utility>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/indicator/MicrophoneLevel.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

SetupCard::SetupCard(AppModel& model, Scheduler& scheduler) : model_(model) {
    setAccessibleName(tr("Make it yours"));
    auto* once = captionText(tr("ONE-TIME SETUP"));
    once->setWordWrap(false);
    auto* top = new QHBoxLayout;
    top->addLayout(cardTitle(eyebrowText(tr("SET UP YOUR FLOW")), headingText(tr("Make it yours"))),
                   1);
    top->addWidget(once, 0, Qt::AlignTop);
    content().addLayout(top);
    addServiceRow();
    addMicrophoneRow(scheduler);
    addRow(
        tr("Accessibility"), tr("Use your shortcut and insert text"), tr("Enable"),
        [this] { return model_.accessibilityAllowed(); },
        [this] { model_.requestAccessibility(); });
    addKeyboardRow();
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
}

// The key of the OpenAI API, or another service, which may need none.
void SetupCard::addServiceRow() {
    auto& row = addRow(
        {}, {}, tr("Add key"), [this] { return model_.hasKey(); },
        [this] { model_.setSelectedPage(WindowPage::settings); });
    useOffline_ = button(tr("Use the offline recogniser"));
    row.line->insertWidget(row.line->indexOf(row.action), useOffline_);
    connect(useOffline_, &QPushButton::clicked, this,
            [this] { model_.speechService().choice().choose(SpeechServiceKind::offline); });
}

// With the level, which shows whether it is the one that the user speaks into.
void SetupCard::addMicrophoneRow(Scheduler& scheduler) {
    const auto& row = addRow(
        tr("Microphone"), tr("Record only while you dictate"), tr("Enable"),
        [this] { return model_.microphoneAllowed(); }, [this] { model_.requestMicrophone(); });
    level_ = new MicrophoneLevel(model_, scheduler);
    row.line->insertWidget(row.line->indexOf(row.action), level_);
}

void SetupCard::addKeyboardRow() {
    auto& row = addRow(
        {}, {}, tr("Open Settings"), [this] { return model_.keyboardReady(); },
        [this] { model_.setSelectedPage(WindowPage::settings); });
    row.vanishes = true;
    keyboard_ = rows_.size() - 1;
}

// Where the desktop keeps the shortcut the user can choose another or allow it.
void SetupCard::refreshKeyboard() {
    auto& row = rows_[keyboard_];
    const auto problem = model_.shortcutProblem();
    row.title->setText(problem ? tr("Shortcut") : tr("Enable keyboard access in Input Monitoring"));
    row.detail->setText(problem ? shown(*problem)
                                : tr("If access is already enabled, quit and reopen Quorvi."));
    row.action->setAccessibleName(row.action->text() + QStringLiteral(": ") + row.title->text());
    row.hasAction = problem.has_value();
}

void SetupCard::refreshService() {
    auto& row = rows_.front();
    const auto& service = model_.speechService();
    const auto& choice = service.choice();
    const bool isMain = choice.usesMainKey();
    row.title->setText(isMain ? tr("OpenAI API key") : tr("Speech service"));
    if (isMain)
        row.detail->setText(tr("Stored securely in your Mac’s Keychain"));
    else if (choice.kind() == SpeechServiceKind::offline)
        row.detail->setText(service.hasOffline()
                                ? tr("Offline on this computer, where no key is needed")
                                : shown(say::offlineNotInstalled()));
    else
        row.detail->setText(choice.otherAddress().empty() ? shown(say::serviceAddressMissing())
                                                          : qt(choice.otherAddress()));
    row.action->setText(isMain ? tr("Add key") : tr("Open Settings"));
    row.action->setAccessibleName(row.action->text() + QStringLiteral(": ") + row.title->text());
    useOffline_->setVisible(isMain && !choice.isFixed() && !model_.hasKey() &&
                            service.hasOffline());
}

SetupCard::Row& SetupCard::addRow(const QString& title, const QString& detail,
                                  const QString& action, std::function<bool()> satisfied,
                                  std::function<void()> effect) {
    Row made{};
    made.widget = new QWidget;
    made.symbol = new SymbolLabel("circle.dashed", 22, ColorRole::secondary);
    made.title = bodyText(title);
    made.action = button(action);
    made.action->setAccessibleName(action + QStringLiteral(": ") + title);
    made.hasAction = static_cast<bool>(effect);
    made.ready = bodyText(tr("Ready"));
    made.ready->setForegroundRole(QPalette::PlaceholderText);
    made.ready->setWordWrap(false);
    made.satisfied = std::move(satisfied);
    auto* all = new QVBoxLayout(made.widget);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(spacing::medium);
    all->addWidget(divider());
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(made.title);
    made.detail = captionText(detail);
    texts->addWidget(made.detail);
    auto* line = made.line = new QHBoxLayout;
    line->setSpacing(spacing::medium);
    line->addWidget(made.symbol);
    line->addLayout(texts, 1);
    line->addWidget(made.action);
    line->addWidget(made.ready);
    all->addLayout(line);
    content().addWidget(made.widget);
    if (effect) connect(made.action, &QPushButton::clicked, this, std::move(effect));
    rows_.push_back(std::move(made));
    return rows_.back();
}

void SetupCard::refresh() {
    refreshService();
    refreshKeyboard();
    for (auto& row : rows_) {
        const bool ready = row.satisfied();
        row.symbol->setSymbol(ready ? "checkmark.circle.fill" : "circle.dashed",
                              ready ? ColorRole::success : ColorRole::secondary);
        row.action->setVisible(!ready && row.hasAction);
        row.ready->setVisible(ready);
        row.widget->setVisible(!(ready && row.vanishes));
    }
    level_->setVisible(model_.microphoneAllowed());
    setVisible(!model_.ready());
}

}  // namespace quorvi
