#pragma once

#include <QCoreApplication>

#include "Quorvi/platform/DesktopCapabilities.h"
#include "Quorvi/platform/KeyConsent.h"
#include "Quorvi/ui/widgets/Card.h"

class QLabel;

namespace quorvi {

class AppModel;
class Switch;

// The settings section that says what a Wayland desktop offers, and what follows from what it does
// not; with the switch for the leave to press keys, where one is needed. Hidden on others. Main
// thread.
class DesktopSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(DesktopSettings)

public:
    // `keys` is null where no leave is needed.
    DesktopSettings(const DesktopCapabilities& desktop, AppModel& model, KeyConsent* keys);

private:
    void addKeys();
    void refreshKeys();

    AppModel& model_;
    KeyConsent* const keys_;
    Switch* allowed_ = nullptr;
    QLabel* answer_ = nullptr;
    Subscription keyChanges_, stageChanges_;
};

}  // namespace quorvi
