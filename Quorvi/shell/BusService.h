#pragma once

#include <QDBusVirtualObject>
#include <functional>

#include "Quorvi/dictation/AppModel.h"

namespace quorvi {

// The program's object on the session bus, for launchers, scripts and key bindings. Transcripts are
// never sent over the bus. Does nothing without a bus. Main thread; the controller outlives it.
class BusService : public QDBusVirtualObject {
public:
    struct Actions {
        std::function<void()> show;  // the window
        std::function<void()> quit;
        std::function<void()> toggle;  // the dictation
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
