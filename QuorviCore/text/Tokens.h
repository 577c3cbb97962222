#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvi::text {

// A part of a text between two positions where a whole-word phrase can begin or end.
struct Token {
    std::uint32_t begin;  // byte offsets in the text
    std::uint32_t end;
    std::uint32_t foldedBegin;  // byte offsets in the folded form
    std::uint32_t foldedEnd;
    std::uint32_t hash;  // of the folded form
    bool isWord;         // a run of letters, marks, numbers and underscores, else one code point
    bool followsSpace;   // preceded by white space
};

// Splits a text in Form C into tokens with their full case folding. Keep one object for many texts:
// it reuses its buffers. One thread at a time.
class Tokens {
public:
    // The text need only live during the call.
    void assign(std::string_view s);

    std::span<const Token> all() const { return tokens_; }
    std::string_view folded(const Token& token) const {
        return std::string_view(folded_).substr(token.foldedBegin,
                                                token.foldedEnd - token.foldedBegin);
    }

private:
    std::vector<Token> tokens_;
    std::string folded_;
};

}  // namespace quorvi::text
