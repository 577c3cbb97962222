#pragma once

class QApplication;

namespace quorvi {

// Reads the command line and the environment, puts the program together, and runs it until the user
// quits. Returns the exit status: 0, or 2 for a command line that makes no sense.
int runApplication(QApplication& qt);

}  // namespace quorvi
