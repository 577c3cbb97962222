#pragma once

#include <optional>
#include <string>

#include "QuorviCore/shortcut/DictationMode.h"
#include "QuorviCore/shortcut/Hotkey.h"

namespace quorvi {

// What the command line asks for. Options that are given change the stored
// preferences, as the user does in Settings.
struct CommandLine {
    std::optional<Hotkey> shortcut;
    std::optional<DictationMode> mode;
    bool printStages = false;

    // Parses the application's arguments; prints the help, the version or a complaint and ends the
    // process where that is what they come to.
    static CommandLine parse();
};

}  // namespace quorvi
