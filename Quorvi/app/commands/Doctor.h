#pragma once

namespace quorvi {

// Looks at everything that a dictation needs, without starting one: prints a line for each, what is
// wrong and what to do about it. Returns the exit status: 0, or 1 when something needs the user.
// Sends nothing but a request without a key to the speech service. Needs a QCoreApplication; looks
// for a tray only when that is a QApplication.
int runDoctor();

}  // namespace quorvi
