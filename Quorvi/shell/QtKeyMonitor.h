#pragma once

#include <QObject>
#include <map>
#include <memory>

#include "Quorvi/platform/LocalKeyMonitor.h"

class QKeyEvent;

namespace quorvi {

// Observes the key events of this program's windows through an event filter on the application
// object. Main thread; lives as long as the application object.
class QtKeyMonitor final : public QObject, public LocalKeyMonitor {
public:
    [[nodiscard]] Subscription observe(Handler handler) override;

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    bool handle(const QKeyEvent& event, bool isPress);

    std::shared_ptr<Handler> handler_;
    // Held modifiers by scan code, so that each is released as what it was pressed as.
    std::map<std::uint32_t, KeyCode> held_;
};

}  // namespace quorvi
