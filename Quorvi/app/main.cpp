#include <malloc.h>
#include <sys/resource.h>

#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Quorvi/app/Application.h"
#include "Quorvi/app/CommandLine.h"
#include "Quorvi/app/commands/CloudCommand.h"
#include "Quorvi/app/commands/ComputersCommand.h"
#include "Quorvi/app/commands/Doctor.h"
#include "Quorvi/app/commands/EraseCommand.h"
#include "Quorvi/app/commands/KeyCommand.h"
#include "Quorvi/app/commands/ShortcutCommand.h"
#include "Quorvi/app/commands/TransferCommand.h"
#include "Quorvi/platform/linux/wayland/probe/WaylandProbe.h"
#include "Quorvi/platform/linux/x11/keyboard/X11InputSupport.h"
#include "Quorvi/shell/BusCommand.h"

namespace {

// Removes a variable from the environment and overwrites its value there, so that neither child
// processes nor /proc show it. Returns the value. To be called before other threads start, since
// they may read the environment.
std::string takeFromEnvironment(const char* name) {
    char* value = std::getenv(name);
    if (!value) return {};
    std::string taken = value;
    explicit_bzero(value, taken.size());
    unsetenv(name);
    return taken;
}

// Disables core dumps, which could hold the key and transcripts. A limit of 1 byte rather than 0:
// the kernel ignores 0 when dumps are piped to a collector, and a file of 1 byte holds nothing. The
// empty filter covers a limit that can't be lowered.
void disableCoreDumps() {
    if (FILE* filter = std::fopen("/proc/self/coredump_filter", "w")) {
        std::fputs("0", filter);
        std::fclose(filter);
    }
    rlimit limit{};
    if (getrlimit(RLIMIT_CORE, &limit) != 0) return;
    limit.rlim_cur = std::min<rlim_t>(1, limit.rlim_max);
    setrlimit(RLIMIT_CORE, &limit);
}

// Memory of this size goes back to the system when it is freed. By default the limits grow with the
// first large document that is freed, and the next ones stay.
void keepHeapSmall() {
    constexpr int limit = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, limit);
    mallopt(M_TRIM_THRESHOLD, limit);
}

// Whether the command line asks only for the help or the version, which needs no desktop.
bool asksForHelp(int argc, char** argv) {
    return std::any_of(argv + 1, argv + argc, [](std::string_view argument) {
        return argument == "--help" || argument == "-h" || argument == "--version" ||
               argument == "-v";
    });
}

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

// The windows are X11's, also through XWayland, and Wayland's where there is no X display. Returns
// false if there is no display at all.
bool chooseDisplay(const quorvi::DesktopCapabilities& capabilities) {
    if (!isSet("DISPLAY") && !capabilities.isWayland) return false;
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", isSet("DISPLAY") ? "xcb" : "wayland", 1);
    return true;
}

// Without a working display Qt would end the program, so the doctor then runs without widgets.
int examine(int argc, char** argv) {
    const auto capabilities = quorvi::probeWayland();
    chooseDisplay(capabilities);
    if (quorvi::x11InputHookIsPossible() || (!isSet("DISPLAY") && capabilities.isWayland)) {
        const QApplication qt(argc, argv);
        return quorvi::runDoctor();
    }
    const QCoreApplication qt(argc, argv);
    return quorvi::runDoctor();
}

// Runs a command that works without the program's interface. Returns its exit status, or nullopt if
// the arguments name none.
std::optional<int> runCommand(int argc, char** argv) {
    using namespace quorvi;
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    for (const auto run : {runCloudCommand, runComputersCommand, runTransferCommand,
                           runEraseCommand, runShortcutCommand})
        if (const auto status = run(arguments)) return status;
    if (arguments.size() != 1) return std::nullopt;
    if (const auto command = keyCommandFromArgument(arguments[0])) return runKeyCommand(*command);
    if (isBusCommand(arguments[0])) return runBusCommand(arguments[0]);
    if (arguments[0] == "doctor") return examine(argc, argv);
    return std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
    disableCoreDumps();
    keepHeapSmall();
    auto apiKey = takeFromEnvironment("QUORVI_API_KEY");
    QCoreApplication::setApplicationName(QStringLiteral("Quorvi"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUORVI_VERSION));
    if (asksForHelp(argc, argv)) {
        const QCoreApplication qt(argc, argv);
        quorvi::CommandLine::parse();
        return 0;
    }
    if (const auto status = runCommand(argc, argv)) return *status;
    // Before there is anything that a slow compositor could hold up.
    const auto capabilities = quorvi::probeWayland();
    if (!chooseDisplay(capabilities)) {
        const QCoreApplication qt(argc, argv);
        quorvi::CommandLine::parse();
        std::fprintf(stderr, "quorvi: There is no display. Start Quorvi on a desktop.\n");
        return 1;
    }
    // With several screens Qt ignores the desktop's panels unless told to ask the window manager.
    if (!std::getenv("QT_RELY_ON_NET_WORKAREA_ATOM"))
        setenv("QT_RELY_ON_NET_WORKAREA_ATOM", "1", 1);
    QApplication qt(argc, argv);
    QApplication::setDesktopFileName(QStringLiteral("app.quorvi.Quorvi"));
    QApplication::setQuitOnLastWindowClosed(false);
    return quorvi::runApplication(qt, capabilities, std::move(apiKey));
}
