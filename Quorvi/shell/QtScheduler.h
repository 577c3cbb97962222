#pragma once

#include <QObject>

#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The main thread's scheduler, on Qt's event loop. Created after the QCoreApplication; outlives the
// event loop.
class QtScheduler : public Scheduler {
public:
    TimePoint now() const override;
    Date date() const override;
    void post(std::function<void()> work) override;
    Timer after(Duration delay, std::function<void()> work) override;
    Timer every(Duration period, std::function<void()> work) override;

private:
    Timer schedule(Duration delay, std::function<void()> work, bool once);

    QObject context_;  // posted work that is still queued dies with it
};

}  // namespace quorvi
