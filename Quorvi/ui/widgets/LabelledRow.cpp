#include "Quorvi/ui/widgets/LabelledRow.h"

#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

QHBoxLayout* labelledRow(const QString& label, std::initializer_list<QWidget*> widgets) {
    auto* text = bodyText(label);
    text->setBuddy(*widgets.begin());
    auto* layout = new QHBoxLayout;
    layout->setSpacing(spacing::small);
    layout->addWidget(text, 1);
    for (auto* widget : widgets) layout->addWidget(widget);
    return layout;
}

}  // namespace quorvi
