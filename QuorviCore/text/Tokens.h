#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvi::text {

// The part of a text between two places where a whole-word phrase can begin or end.
struct Token {
    std::uint32_t begin;  // bytes of the text
    std::uint32_t end;
    std::uint32_t foldedBegin;  // bytes of the folded form
    std::uint32_t foldedEnd;
    std::uint32_t hash;  // of the folded form
    bool isWord;         // a run of letters, marks, numbers and underscores, else one code point
    bool followsSpace;   // white space, however much, stands before it
};

// A text in Form C cut into tokens, each with its full case folding. An object is meant to be kept
// and given one text after the other, since its buffers are reused. For one thread at a time.
class Tokens {
public:
    // The text must stay alive only during the call.
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
