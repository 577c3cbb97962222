#pragma once

#include <string>

class QApplication;

namespace quorvi {

// Reads the command line and the environment, puts the program together, and runs it until the user
// quits. `apiKey` is the key to begin with, or empty. Returns the exit status: 0, also when Quorvi
// is running already, or 2 for a command line or a service address that makes no sense.
int runApplication(QApplication& qt, std::string apiKey);

}  // namespace quorvi
