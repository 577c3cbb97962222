#include "Quorvi/ui/settings/MicrophoneSettings.h"

#include <algorithm>
#include <utility>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/indicator/MicrophoneLevel.h"
#include "Quorvi/ui/widgets/LabelledRow.h"

namespace quorvi {

namespace {

// In characters. Longer descriptions are cut short.
constexpr int pickerWidth = 28;

// Keeps both ends, by which similar devices differ.
QString shortened(const QString& text, const QFontMetrics& metrics) {
    const int width = pickerWidth * metrics.horizontalAdvance(QLatin1Char('X'));
    return metrics.elidedText(text, Qt::ElideMiddle, width);
}

}  // namespace

MicrophoneSettings::MicrophoneSettings(AppModel& model, Scheduler& scheduler)
    : Card(tr("Microphone"), "mic"),
      model_(model),
      picker_(new Picker(tr("Microphone"))),
      used_(secondaryText()),
      level_(new MicrophoneLevel(model, scheduler)),
      explanation_(captionText()) {
    picker_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    picker_->setMinimumContentsLength(pickerWidth);
    content().addLayout(labelledRow(tr("Record from"), {picker_}));
    auto* line = row({used_, level_});
    line->setStretch(0, 1);
    content().addLayout(line);
    content().addWidget(explanation_);
    connect(picker_, &QComboBox::activated, this, [this](int index) {
        model_.microphone().choose(offered_[static_cast<std::size_t>(index)]);
        refresh();
    });
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
}

void MicrophoneSettings::refresh() {
    const auto& microphone = model_.microphone();
    const auto used = microphone.used();
    setEnabled(!isActive(model_.stage()));
    fillPicker();
    used_->setText(used ? tr("In use: %1").arg(qt(used->description))
                        : tr("No microphone is connected."));
    level_->setVisible(used.has_value());
    explanation_->setText(
        microphone.isMissing()
            ? tr("%1 is not connected. Until it is, Quorvi uses the system’s default.")
                  .arg(qt(microphone.chosen().description))
            : tr("Speak, and the bars move. Quorvi listens for them only while they are shown, and "
                 "keeps nothing."));
}

void MicrophoneSettings::fillPicker() {
    const auto& microphone = model_.microphone();
    const auto chosen = microphone.chosen();
    offered_ = microphone.all();
    offered_.insert(offered_.begin(), Microphone{});
    QStringList texts{tr("System default")};
    for (std::size_t each = 1; each < offered_.size(); ++each)
        texts << qt(offered_[each].description);
    auto current = std::ranges::find(offered_, chosen.name, &Microphone::name);
    if (current == offered_.end()) {
        current = offered_.insert(current, chosen);
        texts << tr("%1 (not connected)").arg(qt(chosen.description));
    }
    for (auto& text : texts) text = shortened(text, picker_->fontMetrics());
    if (texts != texts_) {
        const QSignalBlocker quiet(picker_);
        picker_->clear();
        picker_->addItems(texts);
        texts_ = std::move(texts);
    }
    picker_->show(static_cast<int>(current - offered_.begin()));
}

}  // namespace quorvi
