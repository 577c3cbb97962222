#include "Quorvi/ui/indicator/MicrophoneLevel.h"

#include <QEvent>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Colors.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration interval = 80ms;

}  // namespace

MicrophoneLevel::MicrophoneLevel(AppModel& model, Scheduler& scheduler)
    : LevelMeter(nullptr), model_(model), scheduler_(scheduler) {
    showColor();
    changes_ = model_.onChange([this] { follow(); });
}

MicrophoneLevel::~MicrophoneLevel() = default;

void MicrophoneLevel::follow() {
    const auto used = model_.microphone().used();
    const bool isDictating = isActive(model_.stage()) || model_.isStarting();
    const bool isSeen = isVisible() && !window()->isMinimized();
    if (!used || isDictating || !isSeen || used->name != microphone_) {
        ticks_.cancel();
        level_.reset();
        microphone_.clear();
        setLevel(0);
    }
    if (!used || isDictating || !isSeen || level_) return;
    microphone_ = used->name;
    level_ = model_.microphone().makeLevel();
    ticks_ = scheduler_.every(interval, [this] { setLevel(meterLevel(level_->averagePower())); });
}

void MicrophoneLevel::showEvent(QShowEvent* event) {
    LevelMeter::showEvent(event);
    window()->installEventFilter(this);
    follow();
}

void MicrophoneLevel::hideEvent(QHideEvent* event) {
    LevelMeter::hideEvent(event);
    follow();
}

void MicrophoneLevel::changeEvent(QEvent* event) {
    LevelMeter::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) showColor();
}

bool MicrophoneLevel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowStateChange) follow();
    return LevelMeter::eventFilter(watched, event);
}

void MicrophoneLevel::showColor() {
    setColor(color(ColorRole::accent, palette()));
}

}  // namespace quorvi
