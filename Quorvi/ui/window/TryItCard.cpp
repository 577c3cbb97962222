#include "Quorvi/ui/window/TryItCard.h"

#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

namespace {

constexpr int fieldLines = 5;

}  // namespace

TryItCard::TryItCard() {
    setAccessibleName(tr("Try it here"));
    content().addLayout(
        cardTitle(eyebrowText(tr("CLICK BELOW, THEN DICTATE")), headingText(tr("Try it here"))));
    auto* field = new TextArea(tr("Dictation test field"), fieldLines);
    field->setPlaceholderText(tr("Hello, world. Καλημέρα, κόσμε."));
    content().addWidget(field);
}

}  // namespace quorvi
