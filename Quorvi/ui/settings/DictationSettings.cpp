#include "Quorvi/ui/settings/DictationSettings.h"

#include <QMenu>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/translations/ShownShortcut.h"
#include "Quorvi/ui/widgets/LabelledRow.h"

namespace quorvi {

namespace {

constexpr int previewWidth = 150;  // equal, so that the pickers align

}  // namespace

DictationSettings::DictationSettings(AppModel& model)
    : Card(tr("Dictation"), "keyboard"), model_(model) {
    if (model_.shortcutChoice().desktop().isOffered)
        addShortcut();
    else
        content().addWidget(secondaryText(shown(say::desktopHasNoShortcuts())));
    addReset();
    addSounds();
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
}

void DictationSettings::addShortcut() {
    const auto& choice = model_.shortcutChoice();
    const auto desktop = choice.desktop();
    auto explanation =
        tr("Use a function key, or a key with ⌘ / ⌃ / ⌥. This desktop reports no lone modifiers. "
           "“quorvi cancel” cancels.");
    if (desktop.hasLoneModifiers)
        explanation =
            tr("Press and release Left or Right Control, Right Option, or a function key. You can "
               "also use a key with ⌘ / ⌃ / ⌥. Esc cancels.");
    else if (desktop.hasEscape)
        explanation =
            tr("Use a function key, or a key with ⌘ / ⌃ / ⌥. This desktop reports no lone "
               "modifiers. Esc cancels.");
    content().addWidget(secondaryText(explanation));
    shortcut_ = button({});
    auto* menu = new QMenu(shortcut_);
    for (const auto& proposal : choice.proposals())
        connect(menu->addAction(shown(proposal)), &QAction::triggered, this, [this, proposal] {
            model_.endShortcutCapture();
            model_.setShortcut(proposal);
        });
    menu->addSeparator();
    connect(menu->addAction(tr("Record custom shortcut…")), &QAction::triggered, this,
            [this] { model_.beginShortcutCapture(); });
    shortcut_->setMenu(menu);
    cancel_ = button(tr("Cancel"));
    cancel_->setAccessibleName(tr("Keep the shortcut"));
    connect(cancel_, &QPushButton::clicked, this, [this] { model_.endShortcutCapture(); });
    content().addLayout(labelledRow(tr("Shortcut"), {shortcut_, cancel_}));
    capture_ = bodyText();
    content().addWidget(capture_);
    problem_ = bodyText();
    content().addWidget(problem_);
    if (desktop.needsListing) addListing();
    content().addWidget(captionText(
        tr("Choose a shortcut that no other dictation app, and no other application, uses "
           "already. Function keys may require Fn.")));

    mode_ = new Picker(tr("Shortcut mode"));
    for (auto mode : allDictationModes) mode_->addItem(shown(title(mode)));
    connect(mode_, &QComboBox::activated, this, [this](int index) {
        model_.setMode(allDictationModes[static_cast<std::size_t>(index)]);
    });
    content().addLayout(labelledRow(tr("Shortcut mode"), {mode_}));
    noReleases_ = captionText(shown(say::noReleases()));
    content().addWidget(noReleases_);
}

void DictationSettings::addReset() {
    auto* reset = button(tr("Reset dictation"));
    auto* resetRow = row({captionText(tr("If your shortcut stops responding, reset dictation to "
                                         "reconnect keyboard access.")),
                          reset});
    resetRow->setStretch(0, 1);
    resetRow->setSpacing(spacing::large);
    content().addLayout(resetRow);
    connect(reset, &QPushButton::clicked, this, [this] { model_.resetDictation(); });
}

void DictationSettings::addListing() {
    listed_ = new Switch(tr("Add the shortcut to the desktop's settings"));
    connect(listed_, &QCheckBox::toggled, this,
            [this](bool on) { model_.shortcutChoice().setListed(on); });
    content().addWidget(listed_);
    content().addWidget(captionText(
        tr("The desktop runs a small program of Quorvi when you press the shortcut. You find it "
           "among the custom shortcuts in the desktop's settings while Quorvi runs. Switched off, "
           "nothing of it stays there.")));
}

void DictationSettings::addSounds() {
    content().addWidget(divider());
    content().addWidget(headingText(tr("Interaction")));
    sounds_ = new Switch(tr("Play sounds"));
    connect(sounds_, &QCheckBox::toggled, this,
            [this](bool on) { model_.settings().set(setting::soundCuesEnabled, on); });
    content().addWidget(sounds_);
    startSound_ = soundPicker(tr("Start sound"), RecordingCue::start, tr("Preview start"));
    stopSound_ = soundPicker(tr("Stop sound"), RecordingCue::stop, tr("Preview stop"));
    content().addWidget(
        captionText(tr("Choose a separate cue for starting and stopping. Silent "
                       "disables just that cue.")));
}

Picker* DictationSettings::soundPicker(const QString& label, RecordingCue cue,
                                       const QString& preview) {
    auto* picker = new Picker(label);
    for (auto style : allRecordingSoundStyles) picker->addItem(shown(title(style)));
    connect(picker, &QComboBox::activated, this, [this, cue](int index) {
        model_.setSoundStyle(cue, allRecordingSoundStyles[static_cast<std::size_t>(index)]);
    });
    auto* play = button(preview, ButtonKind::regular, "speaker.wave.2");
    play->setMinimumWidth(previewWidth);
    connect(play, &QPushButton::clicked, this, [this, cue] { model_.previewSound(cue); });
    content().addLayout(labelledRow(label, {picker, play}));
    return picker;
}

void DictationSettings::refresh() {
    setEnabled(!isActive(model_.stage()));
    if (shortcut_) refreshShortcut();
    sounds_->show(model_.settings().get(setting::soundCuesEnabled));
    startSound_->show(static_cast<int>(model_.soundStyle(RecordingCue::start)));
    stopSound_->show(static_cast<int>(model_.soundStyle(RecordingCue::stop)));
}

void DictationSettings::refreshShortcut() {
    const bool choosing = model_.isChoosingShortcut();
    const QString label = shown(model_.shortcut());
    shortcut_->setText(choosing ? tr("Press a key…") : label);
    shortcut_->setAccessibleName(tr("Shortcut: %1").arg(shortcut_->text()));
    cancel_->setVisible(choosing);
    capture_->setVisible(choosing);
    capture_->setText(model_.hasRefusedShortcut()
                          ? shown(model_.shortcutChoice().unsuitable())
                          : tr("Press the new shortcut. Esc keeps %1.").arg(label));
    const auto desktop = model_.shortcutChoice().desktop();
    const auto problem = model_.shortcutProblem();
    problem_->setVisible(problem && !choosing);
    problem_->setText(problem ? shown(*problem) : QString());
    if (listed_) listed_->show(desktop.isListed);
    noReleases_->setVisible(!desktop.hasRelease);
    mode_->show(static_cast<int>(model_.mode()));
}

}  // namespace quorvi
