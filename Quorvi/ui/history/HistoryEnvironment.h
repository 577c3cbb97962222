#pragma once

#include <QString>
#include <QWidget>
#include <functional>

#include "Quorvi/history/HistoryStore.h"

namespace quorvi {

// What the pages on the history stand on; all of it outlives them.
struct HistoryEnvironment {
    HistoryStore& store;
    Executor& executor;  // for searches and sums, which take some ten milliseconds
    Scheduler& scheduler;
    std::function<Calendar()> calendar;  // the user's present one; costs nothing
    // Makes the control that remembers a correction in a transcript; may be none.
    std::function<QWidget*(const QString& transcript)> makeRememberButton;
};

}  // namespace quorvi
