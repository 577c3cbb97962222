#pragma once

#include <QCoreApplication>

#include "Quorvi/platform/DesktopCapabilities.h"
#include "Quorvi/ui/widgets/Card.h"

namespace quorvi {

// The settings section that says what a Wayland desktop offers, and what follows from what it does
// not. Hidden on others. Main thread.
class DesktopSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(DesktopSettings)

public:
    explicit DesktopSettings(const DesktopCapabilities& desktop);
};

}  // namespace quorvi
