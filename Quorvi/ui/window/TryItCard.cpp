#include "Quorvi/ui/window/TryItCard.h"

#include <QPlainTextEdit>

#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

TryItCard::TryItCard() {
    setAccessibleName(tr("Try it here"));
    content().addWidget(eyebrowText(tr("CLICK BELOW, THEN DICTATE")));
    content().addWidget(headingText(tr("Try it here")));
    auto* field = new QPlainTextEdit;
    field->setAccessibleName(tr("Dictation test field"));
    field->setPlaceholderText(tr("Hello, world. Καλημέρα, κόσμε."));
    field->setTabChangesFocus(true);
    field->setMinimumHeight(field->fontMetrics().lineSpacing() * 5);
    content().addWidget(field);
}

}  // namespace quorvi
