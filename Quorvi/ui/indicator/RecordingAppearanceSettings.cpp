#include "Quorvi/ui/indicator/RecordingAppearanceSettings.h"

#include <QVBoxLayout>
#include <optional>

#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/Card.h"

namespace quorvi {

RecordingAppearanceSettings::RecordingAppearanceSettings(AppModel& model)
    : model_(model),
      style_(new Picker(tr("Style"))),
      detail_(secondaryText()),
      preview_(new RecordingHUD) {
    auto* label = bodyText(tr("Style"));
    label->setWordWrap(false);
    label->setBuddy(style_);
    for (const auto theme : allRecordingThemes) style_->addItem(shown(title(theme)));
    auto* caption = captionText(tr("Preview · microphone off"));
    caption->setAlignment(Qt::AlignCenter);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    all->setSpacing(spacing::small);
    all->addLayout(row({new SymbolLabel("paintpalette"), label, nullptr, style_}));
    all->addWidget(detail_);
    all->addSpacing(spacing::tiny);
    all->addWidget(preview_, 0, Qt::AlignHCenter);
    all->addWidget(caption);

    QObject::connect(style_, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0)
            model_.setRecordingTheme(allRecordingThemes.at(static_cast<std::size_t>(index)));
    });
    follow();
    changes_ = model_.onChange([this] { follow(); });
}

void RecordingAppearanceSettings::follow() {
    const auto theme = model_.recordingTheme();
    const auto description = shown(detail(theme));
    if (detail_->text() == description) return;
    style_->show(static_cast<int>(theme));
    detail_->setText(description);
    preview_->setValues({.stage = DictationStage::recording,
                         .message = tr("Dictating into Text Editor"),
                         .elapsed = 7,
                         .level = 0.6,
                         .theme = theme});
}

}  // namespace quorvi
