#pragma once

#include <QObject>
#include <map>
#include <memory>

#include "Quorvi/platform/LocalKeyMonitor.h"

class QKeyEvent;

namespace quorvi {

// Sees the key events of this program's windows through a filter on the application object. Main
// thread; lives as long as the application object does.
class QtKeyMonitor final : public QObject, public LocalKeyMonitor {
public:
    [[nodiscard]] Subscription observe(Handler handler) override;

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    bool handle(const QKeyEvent& event, bool isPress);

    std::shared_ptr<Handler> handler_;
    // The modifiers held, by their position, so that each is let go as what it was pressed as.
    std::map<std::uint32_t, KeyCode> held_;
};

}  // namespace quorvi
