#pragma once

#include <QCoreApplication>
#include <QPixmap>
#include <QWidget>
#include <functional>
#include <optional>

#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/indicator/HudParts.h"
#include "Quorvi/ui/indicator/LevelMeter.h"
#include "Quorvi/ui/indicator/ThemePalette.h"

namespace quorvi {

// The capsule that shows the state of a dictation, from plain values. Redraws only what changed.
// Its light or dark colours follow the desktop's palette. Main thread.
class RecordingHUD : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(RecordingHUD)

public:
    struct Values {
        DictationStage stage = DictationStage::idle;
        QString message;
        double elapsed = 0;  // seconds
        double level = 0;    // 0 to 1
        RecordingTheme theme = RecordingTheme::glass;
        bool hasEscape = true;          // Escape cancels
        std::function<void()> onCopy;   // empty: no copy button
        std::function<void()> onRetry;  // empty: no button for another try
        std::optional<QString> updateVersion;
        std::function<void()> onUpdate;  // empty: no update button
    };

    explicit RecordingHUD(QWidget* parent = nullptr);

    void setValues(Values values);
    const Values& values() const { return values_; }
    void setReducesMotion(bool reduces) { meter_->setAnimated(!reduces); }
    // For displays without a compositor: no shadow, but an outline.
    void setCutOut(bool cutOut);

    // In points. The panel leaves 8 points around the capsule for its shadow.
    static QSize contentSize(DictationStage stage);
    static QSize panelSize(DictationStage stage);
    static constexpr int shadowMargin = 8;
    static constexpr double cornerRadius = 22;

    // Whether the message may take a second line.
    static bool usesTwoLines(DictationStage stage);
    // "m:ss".
    static QString elapsedText(double seconds);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void arrange();
    void color();
    void showStage();
    void showElapsed();
    void showButtons();
    void renderSurface();

    Values values_;
    ThemePalette colors_;
    bool cutOut_ = false;
    QPixmap surface_;  // empty until it is painted
    StageSign* sign_;
    HeadingLabel* title_;
    HudTime* time_;
    HudText* message_;
    QWidget* recordingRow_;
    LevelMeter* meter_;
    QLabel* hint_;
    HudButton* copy_;
    HudButton* retry_;
    HudButton* update_;
};

}  // namespace quorvi
