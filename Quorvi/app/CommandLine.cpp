#include "Quorvi/app/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace quorvi {

namespace {

constexpr auto description =
    "Dictation that works in every application: hold the shortcut, speak, let go.\n\n"
    "Commands, each by itself, for the Quorvi that is running:\n"
    "  start, finish, toggle, cancel   drive the dictation, as from a key binding of the desktop\n"
    "  status   print its stage, as one word and as a title, its message, and \"ready\" or not\n"
    "  show     bring the window up, starting Quorvi where it is installed\n"
    "  quit     end it\n"
    "  doctor   look at all that a dictation needs, whether Quorvi is running or not; say what is\n"
    "           wrong and what to do\n\n"
    "Commands for what Quorvi keeps of you on this machine, each by itself:\n"
    "  export FILE     write dictations, rules and settings as one JSON document\n"
    "  import FILE     fold such a document in; the later version of each value counts\n"
    "  erase [--yes]   remove everything, after a confirmation; --yes is the confirmation\n\n"
    "Environment:\n"
    "  QUORVI_API_KEY   the key for the speech service, for this run only: it is kept in memory,\n"
    "                   and the keyring's own key is left alone\n"
    "  QUORVI_SERVICE   its address, when it is not the OpenAI API: https://host[:port],\n"
    "                   or http:// for this machine itself\n\n"
    "Exit status: 0 done, after Quit, or when Quorvi is running already; 1 when it could not be\n"
    "done: no display, the keyring refused, a command found no Quorvi, the cloud failed or its\n"
    "address is none, an export, import or erasure failed or was not confirmed, the doctor found\n"
    "something for you to do; 2 when the command line or the speech service's address makes no\n"
    "sense, and when --cloud-release-check finds no account; 130 when an export, import or\n"
    "erasure was interrupted.";

const std::array<std::pair<const char*, const Hotkey*>, 6> shortcuts{{
    {"right-option", &Hotkey::rightOption},
    {"left-control", &Hotkey::leftControl},
    {"right-control", &Hotkey::rightControl},
    {"f8", &Hotkey::f8},
    {"f13", &Hotkey::f13},
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

QString shortcutNames() {
    QStringList names;
    for (const auto& [name, shortcut] : shortcuts) names << QLatin1String(name);
    return names.join(QStringLiteral(", "));
}

}  // namespace

CommandLine CommandLine::parse() {
    const QCommandLineOption shortcut(
        QStringLiteral("shortcut"),
        QStringLiteral("Sets the global shortcut, from now on: %1. Option is Alt, Command is the "
                       "Super key.")
            .arg(shortcutNames()),
        QStringLiteral("name"));
    const QCommandLineOption mode(
        QStringLiteral("mode"),
        QStringLiteral("Sets, from now on: \"hold\" to talk, or press to \"toggle\"."),
        QStringLiteral("mode"));
    const QCommandLineOption stages(
        QStringLiteral("print-stages"),
        QStringLiteral("Print a line for each change of the dictation's stage. Never the text."));
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(description));
    // Not addHelpOption(), which promises options of the toolkit that are none of this program's.
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print this and end."));
    parser.addOption(help);
    parser.addVersionOption();
    // Carried out before a desktop is looked for, and only by themselves; here for the help.
    const QCommandLineOption storeKey(
        QStringLiteral("store-key"),
        QStringLiteral("By itself: reads the API key from the standard input, stores it in the "
                       "keyring and ends."));
    const QCommandLineOption removeKey(
        QStringLiteral("remove-key"),
        QStringLiteral("By itself: removes the API key from the keyring and ends."));
    const QCommandLineOption cloudDatabase(
        QStringLiteral("cloud-database"),
        QStringLiteral("By itself, as --cloud-database=ADDRESS: sets which cloud the machines of "
                       "the user share, and ends. folder:/path or postgresql://user@host/name; "
                       "without an address a folder of this machine's own."),
        QStringLiteral("address"));
    const QCommandLineOption cloudPassword(
        QStringLiteral("store-cloud-password"),
        QStringLiteral("By itself: reads the password of the cloud database from the standard "
                       "input, stores it in the keyring and ends."));
    const QCommandLineOption cloudCheck(
        QStringLiteral("cloud-release-check"),
        QStringLiteral(
            "By itself: writes to the cloud database, reads it back, cleans up, says how "
            "it went and ends, with status 2 when no account is signed in."));
    parser.addOptions(
        {storeKey, removeKey, cloudDatabase, cloudPassword, cloudCheck, shortcut, mode, stages});
    if (!parser.parse(QCoreApplication::arguments())) complain(parser.errorText());
    if (parser.isSet(help)) parser.showHelp();
    if (parser.isSet(QStringLiteral("version"))) parser.showVersion();
    if (!parser.positionalArguments().isEmpty())
        complain(QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments()[0]));

    for (const auto& option : {storeKey, removeKey, cloudDatabase, cloudPassword, cloudCheck})
        if (parser.isSet(option))
            complain(QStringLiteral("--%1 stands by itself").arg(option.names()[0]));

    CommandLine result;
    if (parser.isSet(shortcut)) result.shortcut = parseShortcut(parser.value(shortcut));
    if (parser.isSet(mode)) result.mode = parseMode(parser.value(mode));
    result.printStages = parser.isSet(stages);
    return result;
}

}  // namespace quorvi
