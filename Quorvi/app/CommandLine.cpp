#include "Quorvi/app/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "QuorviCore/text/HelpText.h"

namespace quorvi {

namespace {

// The last two are older names.
const std::array<std::pair<const char*, const Hotkey*>, 9> shortcuts{{
    {"right-alt", &Hotkey::rightOption},
    {"left-control", &Hotkey::leftControl},
    {"right-control", &Hotkey::rightControl},
    {"f8", &Hotkey::f8},
    {"f9", &Hotkey::f9},
    {"f13", &Hotkey::f13},
    {"super-shift-space", &Hotkey::commandShiftSpace},
    {"right-option", &Hotkey::rightOption},
    {"command-shift-space", &Hotkey::commandShiftSpace},
}};

[[noreturn]] void complain(const QString& problem) {
    std::fprintf(stderr, "quorvi: %s (see quorvi --help)\n", qPrintable(problem));
    std::exit(2);
}

Hotkey parseShortcut(const QString& name) {
    for (const auto& [known, shortcut] : shortcuts)
        if (name == QLatin1String(known)) return *shortcut;
    complain(QStringLiteral("unknown shortcut \"%1\"").arg(name));
}

DictationMode parseMode(const QString& name) {
    const auto mode = dictationModeFromRawValue(name.toStdString());
    if (!mode) complain(QStringLiteral("unknown mode \"%1\"").arg(name));
    return *mode;
}

// Of the table of options: "help" or "h|help"; an argument, or "" for an option without a value.
QCommandLineOption option(const char* names, const char* argument) {
    return {QString::fromLatin1(names).split(QLatin1Char('|')),
            {},
            QString::fromLatin1(argument).mid(1)};
}

[[noreturn]] void printHelp() {
    HelpText help(
        "Usage: quorvi [OPTION]...\n"
        "       quorvi COMMAND\n\n"
        "Dictation that works in every application: hold the shortcut, speak, let go.\n");
#define SECTION(title) help.section(title);
#define COMMAND(name, argument, completion, summary, text) help.command(name, argument, text);
#define OPTION(id, names, argument, completion, summary, text) help.option(names, argument, text);
#define EXIT(status, text) help.entry(#status, text);
#define VARIABLE(name, text) help.entry(name, text);
#include "packaging/options/quorvi.inc"
    std::fputs(help.text().c_str(), stdout);
    std::exit(0);
}

}  // namespace

CommandLine CommandLine::parse() {
    QCommandLineParser parser;
    // Carried out before a desktop is looked for, and only by themselves.
    QList<QCommandLineOption> actions;
#define OPTION(id, names, argument, ...)     \
    const auto id = option(names, argument); \
    parser.addOption(id);
#define ACTION(id, names, argument, ...) \
    OPTION(id, names, argument)          \
    actions << id;
#include "packaging/options/quorvi.inc"
    if (!parser.parse(QCoreApplication::arguments())) complain(parser.errorText());
    if (parser.isSet(help)) printHelp();
    if (parser.isSet(version)) parser.showVersion();
    if (!parser.positionalArguments().isEmpty())
        complain(QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments()[0]));
    for (const auto& action : actions)
        if (parser.isSet(action))
            complain(QStringLiteral("--%1 stands by itself").arg(action.names()[0]));

    CommandLine result;
    if (parser.isSet(shortcut)) result.shortcut = parseShortcut(parser.value(shortcut));
    if (parser.isSet(mode)) result.mode = parseMode(parser.value(mode));
    result.printStages = parser.isSet(printStages);
    return result;
}

}  // namespace quorvi
