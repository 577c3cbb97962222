#include "tools/speech-service/Recognizer.h"

extern "C" {
#include <pocketsphinx.h>
#include <sphinxbase/err.h>
#include <sphinxbase/fsg_model.h>
#include <sphinxbase/jsgf.h>
}

#include <limits>
#include <stdexcept>
#include <utility>

#include "tools/speech-service/AudioDecoder.h"

namespace quorvi::speech {

namespace {

struct FreeConfiguration {
    void operator()(cmd_ln_t* configuration) const { cmd_ln_free_r(configuration); }
};

struct FreeGrammar {
    void operator()(jsgf_t* grammar) const { jsgf_grammar_free(grammar); }
    void operator()(fsg_model_t* automaton) const { fsg_model_free(automaton); }
};

bool isLetter(char c) {
    return c >= 'a' && c <= 'z';
}

// Returns the words of a sentence as the dictionary spells them, without punctuation.
std::vector<std::string> wordsOf(const std::string& sentence) {
    std::vector<std::string> words(1);
    for (char c : sentence) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        const bool isWordSign = c == '\'' || c == '-';
        if (isLetter(c) || (c >= '0' && c <= '9') || (isWordSign && !words.back().empty())) {
            words.back() += c;
        } else if (!words.back().empty()) {
            words.emplace_back();
        }
    }
    for (auto& word : words)
        while (!word.empty() && (word.back() == '\'' || word.back() == '-')) word.pop_back();
    std::erase(words, "");
    return words;
}

// Returns how many samples to recognise at once: all, or up to the quietest moment in the next
// seconds of a long recording. Pieces limit the memory of the search and the time until a stop
// takes effect.
std::size_t pieceLength(std::span<const std::int16_t> samples) {
    constexpr std::size_t longest = 15 * sampleRate;
    constexpr std::size_t shortest = 8 * sampleRate;
    constexpr std::size_t window = sampleRate / 5;
    if (samples.size() <= longest) return samples.size();
    std::size_t cut = longest;
    std::int64_t quietest = std::numeric_limits<std::int64_t>::max();
    for (std::size_t begin = shortest; begin + window <= longest; begin += window / 4) {
        std::int64_t energy = 0;
        for (const std::int64_t sample : samples.subspan(begin, window)) energy += sample * sample;
        if (energy < quietest) {
            quietest = energy;
            cut = begin + window / 2;
        }
    }
    return cut;
}

}  // namespace

struct Recognizer::Decoder {
    ps_decoder_t* ps = nullptr;
    ~Decoder() { ps_free(ps); }
};

Recognizer::Recognizer(const Options& options)
    : decoder_(std::make_unique<Decoder>()), punctuates_(options.punctuates) {
    err_set_logfp(nullptr);
    const auto in = [&](const char* name) { return options.modelFolder + "/" + name; };
    const bool isFree = options.grammar.empty() && options.sentences.empty();
    const std::unique_ptr<cmd_ln_t, FreeConfiguration> configuration(
        cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", in("en-us").c_str(), "-dict",
                    in("cmudict-en-us.dict").c_str(), isFree ? "-lm" : nullptr,
                    in("en-us.lm.bin").c_str(), nullptr));
    decoder_->ps = configuration ? ps_init(configuration.get()) : nullptr;
    if (!decoder_->ps) {
        throw std::runtime_error("The model in " + options.modelFolder + " could not be loaded.");
    }
    if (!isFree) {
        useGrammar(options.grammar.empty() ? grammarFor(options.sentences) : options.grammar);
    }
}

Recognizer::~Recognizer() = default;

// Step by step, because ps_set_jsgf_string() leaks the parsed grammar.
void Recognizer::useGrammar(const std::string& jsgf) {
    auto* ps = decoder_->ps;
    const std::unique_ptr<jsgf_t, FreeGrammar> grammar(jsgf_parse_string(jsgf.c_str(), nullptr));
    auto* rule = grammar ? jsgf_get_public_rule(grammar.get()) : nullptr;
    if (!rule) throw std::runtime_error("The grammar is malformed or has no public rule.");
    const auto weight = static_cast<float>(cmd_ln_float_r(ps_get_config(ps), "-lw"));
    const std::unique_ptr<fsg_model_t, FreeGrammar> automaton(
        jsgf_build_fsg(grammar.get(), rule, ps_get_logmath(ps), weight));
    if (!automaton || ps_set_fsg(ps, "grammar", automaton.get()) != 0 ||
        ps_set_search(ps, "grammar") != 0) {
        throw std::runtime_error("The dictionary lacks a word of the grammar.");
    }
}

std::string Recognizer::grammarFor(const std::vector<std::string>& sentences) {
    std::string jsgf = "#JSGF V1.0;\ngrammar sentences;\npublic <sentence> = ";
    bool isFirst = true;
    for (const auto& sentence : sentences) {
        const auto words = wordsOf(sentence);
        if (words.empty()) continue;
        if (!std::exchange(isFirst, false)) jsgf += " | ";
        for (const auto& word : words) {
            char* phones = ps_lookup_word(decoder_->ps, word.c_str());
            if (!phones) {
                throw std::runtime_error("The dictionary lacks the word \"" + word +
                                         "\" of the "
                                         "sentence \"" +
                                         sentence + "\".");
            }
            ckd_free(phones);
            jsgf += word + " ";
        }
    }
    return jsgf + ";\n";
}

std::string Recognizer::recognize(const std::vector<std::int16_t>& samples,
                                  const std::function<bool()>& isWanted) {
    std::string text;
    std::span<const std::int16_t> left = samples;
    while (!left.empty() && isWanted()) {
        const auto piece = left.first(pieceLength(left));
        left = left.subspan(piece.size());
        const auto words = recognizePiece(piece);
        if (!text.empty() && !words.empty()) text += ' ';
        text += words;
    }
    return punctuates_ ? punctuated(text) : text;
}

std::string Recognizer::recognizePiece(std::span<const std::int16_t> samples) {
    auto* ps = decoder_->ps;
    if (ps_start_utt(ps) != 0) throw std::runtime_error("The recogniser could not be started.");
    // As one utterance, the piece is normalised by its own mean, which is recognised better than
    // with the running mean of a stream.
    ps_process_raw(ps, samples.data(), samples.size(), FALSE, TRUE);
    ps_end_utt(ps);
    const char* words = ps_get_hyp(ps, nullptr);
    return words ? words : "";
}

std::string punctuated(const std::string& words) {
    if (words.empty()) return words;
    std::string sentence = words;
    for (std::size_t i = 0; i < sentence.size(); ++i) {
        const bool begins = i == 0 || sentence[i - 1] == ' ';
        const bool ends = i + 1 == sentence.size() || !isLetter(sentence[i + 1]);
        if (i == 0 || (sentence[i] == 'i' && begins && ends))
            sentence[i] =
                static_cast<char>(isLetter(sentence[i]) ? sentence[i] - 'a' + 'A' : sentence[i]);
    }
    return sentence + ".";
}

}  // namespace quorvi::speech
