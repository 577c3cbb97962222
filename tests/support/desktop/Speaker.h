#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"

namespace quorvi::test {

inline constexpr auto spokenSentence = "the weather is nice today";
inline constexpr auto writtenSentence = "The weather is nice today.";

// Somebody who says the sentence into the session's microphone, and the offline speech service,
// which knows it.
class Speaker {
public:
    Speaker() {
        const auto line = process_.readLine();
        service = line.substr(line.rfind(' ') + 1);
        outputOf({"espeak-ng", "-v", "en-us+f2", "-s", "130", "-w", voice_, spokenSentence});
    }
    // It has been said when the process ends.
    Process speak() const {
        return Process({"paplay", "-d", std::getenv("QUORVI_MIC_FEED"), voice_});
    }

    std::string service;  // its address

private:
    TestFolder folder_;
    std::string voice_ = folder_.path() / "speech.wav";
    Process process_{{builtProgram("quorvi-speech-service"), "--port", "0", "--punctuate",
                      "--sentences",
                      folder_.write("sentences", std::string(spokenSentence) + "\n")}};
};

}  // namespace quorvi::test
