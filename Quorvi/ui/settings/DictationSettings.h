#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>

#include "Quorvi/dictation/RecordingCue.h"
#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/shortcut/Hotkey.h"

namespace quorvi {

class AppModel;
class Picker;
class Switch;

// The settings section for the shortcut and the sounds. Disabled during a dictation. Main thread.
class DictationSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(DictationSettings)

public:
    explicit DictationSettings(AppModel& model);

private:
    void addShortcut();
    void addListing();
    void addReset();
    void addSounds();
    Picker* soundPicker(const QString& label, RecordingCue cue, const QString& preview);
    void refresh();
    void refreshShortcut();

    AppModel& model_;
    QPushButton* shortcut_ = nullptr;  // with what follows, where the desktop offers shortcuts
    QPushButton* cancel_;
    QLabel* capture_;
    QLabel* problem_;           // why the shortcut does nothing
    Switch* listed_ = nullptr;  // where the desktop's settings list it
    QLabel* noReleases_;
    Picker* mode_;
    Switch* sounds_;
    Picker* startSound_;
    Picker* stopSound_;
    Subscription changes_;
};

}  // namespace quorvi
