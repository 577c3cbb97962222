#include "Quorvi/app/commands/ShortcutCommand.h"

#include <QCoreApplication>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

#include "Quorvi/app/commands/StoredPreferences.h"
#include "Quorvi/platform/linux/gnome/CustomShortcutSettings.h"
#include "Quorvi/platform/linux/gnome/GrantedShortcuts.h"
#include "Quorvi/platform/linux/kde/KGlobalAccelShortcuts.h"
#include "Quorvi/platform/linux/xkb/KeyMap.h"
#include "Quorvi/shell/BusCommand.h"
#include "Quorvi/shell/HelperPrograms.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

namespace {

int complain(const std::string& problem) {
    std::fprintf(stderr, "quorvi: %s\n", problem.c_str());
    return 1;
}

// Whether no Quorvi is running. The bus may notice a moment later than others that one was killed.
bool hasEnded() {
    constexpr int checks = 50;
    for (int i = 0; i < checks && isRunning(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    return !isRunning();
}

// Quorvi, which binds the key while it runs, notices by itself.
int install(CustomShortcutSettings& settings) {
    const auto shortcut = StoredPreferences().settings.get(setting::hotkey);
    const auto name = shownInEnglish(title(shortcut));
    if (const auto use = settings.takenBy({shortcut.keyCode, shortcut.modifiers}); !use.empty())
        return complain("GNOME uses " + name + " for: " + use +
                        ". Choose another shortcut in Quorvi's Settings.");
    settings.install(helperProgram("quorvi-shortcut"), programBeside("quorvi"));
    if (changesFlags(shortcut.keyCode))
        std::printf(
            "GNOME reports no key such as %s alone. Choose a combination or a function key in "
            "Quorvi's\nSettings; then it works.\n",
            name.c_str());
    else
        std::printf("While Quorvi runs, %s is among the custom shortcuts in GNOME's settings.\n",
                    name.c_str());
    return 0;
}

}  // namespace

bool removeDesktopShortcuts() {
    CustomShortcutSettings().remove();
    forgetGrantedShortcuts();
    removeKdeShortcuts();
    return true;
}

std::optional<int> runShortcutCommand(const std::vector<std::string_view>& arguments) {
    if (arguments.empty() || arguments[0] != "shortcut") return std::nullopt;
    const auto action = arguments.size() == 2 ? arguments[1] : std::string_view();
    if (action != "install" && action != "remove" && action != "release")
        return complain("shortcut takes install or remove (see quorvi --help)") + 1;
    if (action == "release" && hasEnded()) removeKdeShortcuts();
    if (!CustomShortcutSettings::areThere())
        return complain("This desktop has no custom shortcuts that Quorvi knows.");
    int count = 0;
    const QCoreApplication qt(count, nullptr);  // for the folder of the program
    CustomShortcutSettings settings;
    if (action == "install") return install(settings);
    if (action == "remove")
        removeDesktopShortcuts();
    else if (!isRunning())
        settings.bind(CustomShortcutSettings::Entry::cancel, std::nullopt);
    return 0;
}

}  // namespace quorvi
