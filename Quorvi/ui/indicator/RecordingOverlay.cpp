#include "Quorvi/ui/indicator/RecordingOverlay.h"

#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

RecordingOverlay::RecordingOverlay(AppModel& model, AppUpdater& updater, QWidget* parent)
    : RecordingHUD(parent), model_(model), updater_(updater) {
    changes_ = model_.onChange([this] { follow(); });
    updates_ = updater_.onChange([this] { follow(); });
}

RecordingHUD::Values RecordingOverlay::current() {
    Values values{.stage = model_.stage(),
                  .message = shown(model_.message()),
                  .elapsed = model_.elapsed(),
                  .level = model_.level(),
                  .theme = model_.recordingTheme(),
                  .hasEscape = model_.shortcutChoice().desktop().hasEscape};
    if (model_.canCopyFromOverlay() && !model_.lastTranscript().empty())
        values.onCopy = [this] { model_.copyTranscript(); };
    if (model_.canRetryFromOverlay()) values.onRetry = [this] { model_.retry(); };
    if (const auto& version = updater_.availableVersion();
        version && values.stage == DictationStage::recording) {
        values.updateVersion = QString::fromStdString(*version);
        values.onUpdate = [this] { updater_.check(); };
    }
    return values;
}

void RecordingOverlay::follow() {
    if (seen_) setValues(current());
}

void RecordingOverlay::showEvent(QShowEvent* event) {
    seen_ = true;
    follow();
    RecordingHUD::showEvent(event);
}

void RecordingOverlay::hideEvent(QHideEvent* event) {
    seen_ = false;
    RecordingHUD::hideEvent(event);
}

}  // namespace quorvi
