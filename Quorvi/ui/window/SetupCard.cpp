#include "Quorvi/ui/window/SetupCard.h"

#include <utility>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

SetupCard::SetupCard(AppModel& model) : model_(model) {
    setAccessibleName(tr("Make it yours"));
    auto* once = captionText(tr("ONE-TIME SETUP"));
    once->setWordWrap(false);
    auto* top = new QHBoxLayout;
    top->addLayout(cardTitle(eyebrowText(tr("SET UP YOUR FLOW")), headingText(tr("Make it yours"))),
                   1);
    top->addWidget(once, 0, Qt::AlignTop);
    content().addLayout(top);
    addRow(
        tr("OpenAI API key"), tr("Stored securely in your Mac’s Keychain"), tr("Add key"),
        [this] { return model_.hasKey(); },
        [this] { model_.setSelectedPage(WindowPage::settings); });
    addRow(
        tr("Microphone"), tr("Record only while you dictate"), tr("Enable"),
        [this] { return model_.microphoneAllowed(); }, [this] { model_.requestMicrophone(); });
    addRow(
        tr("Accessibility"), tr("Use your shortcut and insert text"), tr("Enable"),
        [this] { return model_.accessibilityAllowed(); },
        [this] { model_.requestAccessibility(); });
    addRow(tr("Enable keyboard access in Input Monitoring"),
           tr("If access is already enabled, quit and reopen Quorvi."), {},
           [this] { return model_.keyboardReady(); }, {})
        .vanishes = true;
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
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
    texts->addWidget(captionText(detail));
    auto* line = new QHBoxLayout;
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
    for (auto& row : rows_) {
        const bool ready = row.satisfied();
        row.symbol->setSymbol(ready ? "checkmark.circle.fill" : "circle.dashed",
                              ready ? ColorRole::success : ColorRole::secondary);
        row.action->setVisible(!ready && row.hasAction);
        row.ready->setVisible(ready);
        row.widget->setVisible(!(ready && row.vanishes));
    }
    setVisible(!model_.ready());
}

}  // namespace quorvi
