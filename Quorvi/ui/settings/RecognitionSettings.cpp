#include "Quorvi/ui/settings/RecognitionSettings.h"

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/widgets/LabelledRow.h"

namespace quorvi {

RecognitionSettings::RecognitionSettings(AppModel& model)
    : Card(tr("Recognition"), "waveform"), model_(model) {
    content().addWidget(
        secondaryText(tr("Language is detected automatically. Speak naturally in any supported "
                         "language; your words stay in their original language.")));
    modelPicker_ = new Picker(tr("Model"));
    for (auto each : allTranscriptionModels) modelPicker_->addItem(qt(title(each)));
    content().addLayout(labelledRow(tr("Model"), {modelPicker_}));
    content().addWidget(
        captionText(tr("Recognition accuracy varies with the recording and model.")));
    const QString label = tr("Names or terms you often use (optional)");
    auto* vocabularyLabel = bodyText(label);
    vocabulary_ = new QLineEdit;
    vocabulary_->setAccessibleName(label);
    vocabularyLabel->setBuddy(vocabulary_);
    auto* field = new QVBoxLayout;
    field->setSpacing(spacing::tiny);
    field->addWidget(vocabularyLabel);
    field->addWidget(vocabulary_);
    content().addLayout(field);
    connect(modelPicker_, &QComboBox::activated, this, [this](int index) {
        model_.setTranscriptionModel(allTranscriptionModels[static_cast<std::size_t>(index)]);
    });
    connect(vocabulary_, &QLineEdit::textEdited, this,
            [this](const QString& text) { edited(text); });
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
}

// The settings keep the beginning of a text that is too long, and so does the field.
void RecognitionSettings::edited(const QString& text) {
    const int caret = vocabulary_->cursorPosition();
    model_.setVocabulary(text.toStdString());
    refresh();
    vocabulary_->setCursorPosition(caret);
}

void RecognitionSettings::refresh() {
    setEnabled(!isActive(model_.stage()));
    // The other services have models of their own.
    modelPicker_->setEnabled(model_.speechService().choice().kind() == SpeechServiceKind::openAI);
    modelPicker_->show(static_cast<int>(model_.transcriptionModel()));
    const QString vocabulary = qt(model_.vocabulary());
    if (vocabulary != vocabulary_->text()) vocabulary_->setText(vocabulary);
}

}  // namespace quorvi
