#pragma once

#include <QString>
#include <QWidget>
#include <functional>

#include "Quorvi/history/HistoryStore.h"
#include "Quorvi/history/SystemCalendar.h"

namespace quorvi {

// What the pages on the history use. All of it outlives them.
struct HistoryEnvironment {
    HistoryStore& store;
    Executor& executor;  // for searches and sums, which take some ten milliseconds
    Scheduler& scheduler;
    SystemCalendar& calendar;
    // Creates the button that remembers a correction in a transcript; may be empty.
    std::function<QWidget*(const QString& transcript)> makeRememberButton;
};

}  // namespace quorvi
