#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "tools/speech-service/Options.h"

namespace quorvi::speech {

// The recogniser with its model, loaded once at construction. One thread at a time.
class Recognizer {
public:
    // Throws std::runtime_error with a sentence when the model can't be loaded or the grammar names
    // a word that the dictionary lacks.
    explicit Recognizer(const Options& options);
    ~Recognizer();

    // The words that were spoken, empty when there were none. `isWanted` is asked now and then, and
    // the recognition ends early, without words, when it says no.
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

// Lower-case words as a sentence: "i'm here" becomes "I'm here."
std::string punctuated(const std::string& words);

}  // namespace quorvi::speech
