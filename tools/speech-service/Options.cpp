#include "tools/speech-service/Options.h"

#include <getopt.h>

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include "QuorviCore/base/Wipe.h"
#include "QuorviCore/text/HelpText.h"
#include "QuorviCore/text/Text.h"

namespace quorvi::speech {

namespace {

std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string contents(std::istreambuf_iterator<char>(file), {});
    if (!file.is_open() || file.bad()) {
        throw std::runtime_error("The file " + path + " could not be read.");
    }
    return contents;
}

int number(const char* option, const char* text, int maximum) {
    int value = 0;
    const auto* end = text + std::strlen(text);
    const auto [stopped, error] = std::from_chars(text, end, value);
    if (error != std::errc() || stopped != end || value < 0 || value > maximum) {
        throw UsageError(std::string(option) + " needs a number between 0 and " +
                         std::to_string(maximum) + ".");
    }
    return value;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const auto end = std::min(text.find('\n', begin), text.size());
        const auto line = text::trimmed(std::string_view(text).substr(begin, end - begin));
        if (!line.empty()) lines.emplace_back(line);
        begin = end + 1;
    }
    return lines;
}

std::string keyIn(std::string contents) {
    std::string key(text::trimmed(contents));
    wipe(contents);
    if (key.empty()) throw std::runtime_error("The key file is empty.");
    return key;
}

// Removes the key from the environment, where other programs of the user could read it.
std::string keyOfEnvironment() {
    constexpr const char* name = "QUORVI_SPEECH_SERVICE_KEY";
    char* value = std::getenv(name);
    if (!value) return {};
    std::string key = value;
    wipe(value, key.size());
    unsetenv(name);
    return key;
}

}  // namespace

std::string usage() {
    HelpText help(
        "Usage: quorvi-speech-service [OPTION]...\n\n"
        "Turns recordings into text without a network, behind the interface of the\n"
        "speech-to-text service that Quorvi uses. Set Quorvi's service address to the one\n"
        "this program prints. English only.\n\n"
        "When requests are accepted, the line \"listening on URL\" is printed. SIGTERM or\n"
        "SIGINT ends the program.\n");
#define SECTION(title) help.section(title);
#define OPTION(id, name, argument, completion, summary, text) help.option(name, argument, text);
#define EXIT(status, text) help.entry(#status, text);
#define VARIABLE(name, text) help.entry(name, text);
#include "packaging/options/quorvi-speech-service.inc"
    return help.text();
}

std::optional<Options> parseOptions(int argc, char** argv) {
#define OPTION(id, ...) id,
    enum : int {
        none,
#include "packaging/options/quorvi-speech-service.inc"
    };
#define OPTION(id, name, argument, ...) \
    {name, *(argument) ? required_argument : no_argument, nullptr, id},
    static const option known[] = {
#include "packaging/options/quorvi-speech-service.inc"
        {nullptr, 0, nullptr, none}};
    Options options;
    options.key = keyOfEnvironment();
    for (int found; (found = getopt_long(argc, argv, "", known, nullptr)) != -1;) {
        switch (found) {
            case listen:
                options.listen = optarg;
                break;
            case port:
                options.port = number("--port", optarg, 65535);
                break;
            case keyFile:
                options.key = keyIn(contentsOf(optarg));
                break;
            case supervised:
                options.isSupervised = true;
                break;
            case grammar:
                options.grammar = contentsOf(optarg);
                break;
            case sentences:
                options.sentences = linesOf(contentsOf(optarg));
                break;
            case model:
                options.modelFolder = optarg;
                break;
            case punctuate:
                options.punctuates = true;
                break;
            case delay:
                options.delay = std::chrono::milliseconds(number("--delay-ms", optarg, 600'000));
                break;
            case help:
                return std::nullopt;
            default:
                throw UsageError("See --help for the options.");
        }
    }
    if (optind < argc) throw UsageError("Only options are understood; see --help.");
    if (!options.grammar.empty() && !options.sentences.empty()) {
        throw UsageError("--grammar and --sentences exclude each other.");
    }
    return options;
}

}  // namespace quorvi::speech
