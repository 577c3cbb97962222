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

QLineEdit* addLabelledField(QBoxLayout& layout, const QString& label, const QString& example,
                            QWidget* beside) {
    auto* text = bodyText(label);
    auto* field = new QLineEdit;
    field->setAccessibleName(label);
    field->setPlaceholderText(example);
    text->setBuddy(field);
    auto* line = new QHBoxLayout;
    line->setSpacing(spacing::small);
    line->addWidget(field);
    if (beside) line->addWidget(beside);
    auto* both = new QVBoxLayout;
    both->setSpacing(spacing::tiny);
    both->addWidget(text);
    both->addLayout(line);
    layout.addLayout(both);
    return field;
}

}  // namespace quorvi
