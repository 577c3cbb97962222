#include "Quorvi/ui/settings/DesktopSettings.h"

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/system/DesktopParts.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

DesktopSettings::DesktopSettings(const DesktopCapabilities& desktop, AppModel& model,
                                 KeyConsent* keys)
    : Card(tr("This desktop"), "macwindow"), model_(model), keys_(keys) {
    // What the switch says need not be said twice.
    const auto parts = describe(desktop, true);
    setVisible(!parts.empty());
    if (!desktop.isNative()) content().addWidget(bodyText(shown(say::desktopIsNotNative())));
    for (const auto& part : parts) {
        auto* texts = new QVBoxLayout;
        texts->setSpacing(2);
        texts->addWidget(bodyText(shown(part.subject)));
        texts->addWidget(captionText(shown(part.finding)));
        if (part.consequence) texts->addWidget(captionText(shown(*part.consequence)));
        auto* line = new QHBoxLayout;
        line->setSpacing(spacing::medium);
        line->addWidget(
            new SymbolLabel(part.isOffered ? "checkmark.circle.fill" : "circle.dashed", 18,
                            part.isOffered ? ColorRole::success : ColorRole::secondary));
        line->addLayout(texts, 1);
        content().addLayout(line);
    }
    if (keys_) addKeys();
}

void DesktopSettings::addKeys() {
    content().addWidget(divider());
    allowed_ = new Switch(tr("Press keys to paste"));
    connect(allowed_, &QCheckBox::toggled, this, [this](bool on) { keys_->setWanted(on); });
    content().addWidget(allowed_);
    content().addWidget(captionText(
        tr("For fields that take text in no other way; without it, the text is left on the "
           "clipboard. The desktop may ask you once: allow remote interaction there, and let it "
           "remember that. While Quorvi pastes, the desktop shows that it is shared.")));
    answer_ = bodyText();
    content().addWidget(answer_);
    keyChanges_ = keys_->onChange([this] { refreshKeys(); });
    stageChanges_ = model_.onChange([this] { refreshKeys(); });
    refreshKeys();
}

// The desktop's question would take the focus from a dictation.
void DesktopSettings::refreshKeys() {
    using enum KeyConsent::State;
    const auto state = keys_->state();
    allowed_->show(state == on || state == asking);
    allowed_->setEnabled(!isActive(model_.stage()));
    answer_->setVisible(state == asking || state == refused);
    answer_->setText(state == asking
                         ? tr("The desktop is asking you.")
                         : tr("The desktop does not allow it, or does not remember that you do."));
}

}  // namespace quorvi
