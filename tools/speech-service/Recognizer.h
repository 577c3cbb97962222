#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "tools/speech-service/Options.h"

namespace quorvi::speech {

// The speech recogniser. The constructor loads the model. One thread at a time.
class Recognizer {
public:
    // Throws std::runtime_error with a sentence if the model can't be loaded or the grammar has a
    // word that the dictionary lacks.
    explicit Recognizer(const Options& options);
    ~Recognizer();

    // Returns the words, empty if there are none. Calls `isWanted` now and then and returns no
    // words as soon as it is false.
    std::string recognize(const std::vector<std::int16_t>& samples,
                          const std::function<bool()>& isWanted);

private:
    struct Decoder;

    std::string recognizePiece(std::span<const std::int16_t> samples);
    void useGrammar(const std::string& jsgf);
    std::string grammarFor(const std::vector<std::string>& sentences);

    std::unique_ptr<Decoder> decoder_;
    bool punctuates_;
};

// Returns lower-case words as a sentence: "i'm here" becomes "I'm here."
std::string punctuated(const std::string& words);

}  // namespace quorvi::speech
