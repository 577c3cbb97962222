#pragma once

#include <string>

class QApplication;

namespace quorvi {

// Parses the command line and runs the program until the user quits. `apiKey` is the key for this
// run, or empty to use the keyring's. Returns the exit status: 0, also if Quorvi is already
// running, or 2 for an invalid command line or service address.
int runApplication(QApplication& qt, std::string apiKey);

}  // namespace quorvi
