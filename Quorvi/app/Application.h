#pragma once

#include <string>

#include "Quorvi/platform/DesktopCapabilities.h"

class QApplication;

namespace quorvi {

// Parses the command line and runs the program until the user quits. `apiKey` is the key for this
// run, or empty to use the keyring's; `capabilities` are the desktop's. Returns the exit status: 0,
// also if Quorvi is already running, or 2 for an invalid command line or service address.
int runApplication(QApplication& qt, const DesktopCapabilities& capabilities, std::string apiKey);

}  // namespace quorvi
