#pragma once

namespace quorvi {

// Checks everything that a dictation needs, without starting one; prints one line per check and how
// to solve each problem. Returns the exit status: 0, or 1 if there is a problem. Sends nothing but
// a request without a key to the speech service. Needs a QCoreApplication; checks for a tray only
// if that is a QApplication.
int runDoctor();

}  // namespace quorvi
