#pragma once

#include <QDBusVirtualObject>
#include <functional>

#include "Quorvi/dictation/AppModel.h"

namespace quorvi {

// The running program on the session bus: a desktop's launcher brings its window up, and scripts
// and key bindings drive the dictation. What was dictated never goes over the bus. Without a bus
// there is nothing. Main thread; the controller outlives it.
class BusService : public QDBusVirtualObject {
public:
    struct Actions {
        std::function<void()> show;  // the window
        std::function<void()> quit;
    };
    BusService(AppModel& model, Actions actions);
    ~BusService() override;

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    QString introspect(const QString& path) const override;

private:
    bool carryOut(const QString& method);
    QVariantList status() const;

    AppModel& model_;
    Actions actions_;
};

}  // namespace quorvi
