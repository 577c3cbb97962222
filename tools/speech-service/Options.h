#pragma once

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvi::speech {

// What the command line, the environment and the files named there ask for. A plain value.
struct Options {
    std::string listen = "127.0.0.1";
    int port = 0;     // 0: any free port
    std::string key;  // the only key that is accepted; empty: see Authorization
    std::string modelFolder = QUORVI_SPEECH_MODEL;
    std::string grammar;                 // JSGF text; empty: free speech
    std::vector<std::string> sentences;  // the only sentences to expect; empty: any
    std::chrono::milliseconds delay{0};  // waited before each recognition
    bool punctuates = false;
};

// A command line that can't be understood. what() is a sentence for standard error.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

extern const char* const usage;

// Nothing when the help was asked for. Throws UsageError, or std::runtime_error for a file that
// can't be read.
std::optional<Options> parseOptions(int argc, char** argv);

}  // namespace quorvi::speech
