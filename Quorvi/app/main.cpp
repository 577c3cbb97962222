#include <sys/resource.h>

#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Quorvi/app/Application.h"
#include "Quorvi/app/CommandLine.h"
#include "Quorvi/app/commands/CloudCommand.h"
#include "Quorvi/app/commands/Doctor.h"
#include "Quorvi/app/commands/EraseCommand.h"
#include "Quorvi/app/commands/KeyCommand.h"
#include "Quorvi/app/commands/TransferCommand.h"
#include "Quorvi/platform/linux/x11/keyboard/X11InputSupport.h"
#include "Quorvi/shell/BusCommand.h"

namespace {

// A value of the environment, taken out of it and overwritten there, so that no program started
// from here inherits it and the process's environment no longer shows it. To be called before there
// are other threads, which may be reading the environment.
std::string takeFromEnvironment(const char* name) {
    char* value = std::getenv(name);
    if (!value) return {};
    std::string taken = value;
    explicit_bzero(value, taken.size());
    unsetenv(name);
    return taken;
}

// A crash writes no memory anywhere, be it to a file or to a collector of crash reports: the key
// may be in it, and what was said. To a collector the kernel pays no heed to a limit of 0, but it
// takes one of 1 byte for "none"; for a file that is less than any dump. Should the limit not be
// ours to choose, no part of the memory belongs to a dump.
void writeNoCore() {
    if (FILE* filter = std::fopen("/proc/self/coredump_filter", "w")) {
        std::fputs("0", filter);
        std::fclose(filter);
    }
    rlimit limit{};
    if (getrlimit(RLIMIT_CORE, &limit) != 0) return;
    limit.rlim_cur = std::min<rlim_t>(1, limit.rlim_max);
    setrlimit(RLIMIT_CORE, &limit);
}

// Whether the command line only asks for something to read, which needs no desktop.
bool asksToRead(int argc, char** argv) {
    return std::any_of(argv + 1, argv + argc, [](std::string_view argument) {
        return argument == "--help" || argument == "-h" || argument == "--version" ||
               argument == "-v";
    });
}

// On a Wayland desktop the indicator, like the input hook, works through XWayland.
void useX11() {
    if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "xcb", 1);
}

// The toolkit ends a program whose display does not answer.
int examine(int argc, char** argv) {
    useX11();
    if (quorvi::x11InputHookIsPossible()) {
        const QApplication qt(argc, argv);
        return quorvi::runDoctor();
    }
    const QCoreApplication qt(argc, argv);
    return quorvi::runDoctor();
}

}  // namespace

int main(int argc, char** argv) {
    writeNoCore();
    auto apiKey = takeFromEnvironment("QUORVI_API_KEY");
    QCoreApplication::setApplicationName(QStringLiteral("Quorvi"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUORVI_VERSION));
    if (asksToRead(argc, argv)) {
        const QCoreApplication reading(argc, argv);
        quorvi::CommandLine::parse();
        return 0;
    }
    if (argc == 2)
        if (const auto command = quorvi::keyCommandFromArgument(argv[1]))
            return quorvi::runKeyCommand(*command);
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    for (const auto run :
         {quorvi::runCloudCommand, quorvi::runTransferCommand, quorvi::runEraseCommand})
        if (const auto status = run(arguments)) return *status;
    if (argc == 2 && quorvi::isBusCommand(argv[1])) return quorvi::runBusCommand(argv[1]);
    if (argc == 2 && argv[1] == std::string_view("doctor")) return examine(argc, argv);
    const char* display = std::getenv("DISPLAY");
    if (!display || !*display) {
        const QCoreApplication reading(argc, argv);
        quorvi::CommandLine::parse();
        std::fprintf(stderr, "quorvi: There is no X display. Start Quorvi on a desktop.\n");
        return 1;
    }
    useX11();
    // With several screens Qt takes each for free of bars unless told to ask the window manager.
    if (!std::getenv("QT_RELY_ON_NET_WORKAREA_ATOM"))
        setenv("QT_RELY_ON_NET_WORKAREA_ATOM", "1", 1);
    QApplication qt(argc, argv);
    QApplication::setDesktopFileName(QStringLiteral("app.quorvi.Quorvi"));
    QApplication::setQuitOnLastWindowClosed(false);
    return quorvi::runApplication(qt, std::move(apiKey));
}
