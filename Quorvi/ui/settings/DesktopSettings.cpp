#include "Quorvi/ui/settings/DesktopSettings.h"

#include "Quorvi/system/DesktopParts.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

DesktopSettings::DesktopSettings(const DesktopCapabilities& desktop)
    : Card(tr("This desktop"), "macwindow") {
    const auto parts = describe(desktop);
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
}

}  // namespace quorvi
