#pragma once

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvi::speech {

// The settings from the command line, the environment and the files named there. A plain value.
struct Options {
    std::string listen = "127.0.0.1";
    int port = 0;     // 0: any free port
    std::string key;  // the only key that is accepted; empty: see Authorization
    std::string modelFolder = QUORVI_SPEECH_MODEL;
    std::string grammar;                 // JSGF text; empty: free speech
    std::vector<std::string> sentences;  // the only sentences to expect; empty: any
    std::chrono::milliseconds delay{0};  // waited before each recognition
    bool punctuates = false;
    bool isSupervised = false;  // the key comes from standard input, whose end is the service's
};

// Thrown for a command line that is not valid; what() is a sentence for standard error.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Returns the text of --help.
std::string usage();

// Returns nullopt for --help. Throws UsageError, or std::runtime_error for a file that can't be
// read.
std::optional<Options> parseOptions(int argc, char** argv);

}  // namespace quorvi::speech
