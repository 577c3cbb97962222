#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quorvi {

// The ids of Sentences.inc.
enum class Sentence : std::uint16_t {
    nothing,   // the empty message
    verbatim,  // words that come from outside, shown as they are
#define SENTENCE(id, english) id,
#include "QuorviCore/messages/Sentences.inc"
#undef SENTENCE
};

namespace sentences {

inline constexpr std::array templates{
    std::string_view(),
    std::string_view("{words}"),
#define SENTENCE(id, english) std::string_view(english),
#include "QuorviCore/messages/Sentences.inc"
#undef SENTENCE
};

// The English template, with its gaps.
constexpr std::string_view english(Sentence sentence) {
    return templates[static_cast<std::size_t>(sentence)];
}

// The gap that begins at or after `from`, without its braces; its position is npos at the end.
struct Gap {
    std::size_t position;
    std::string_view name;
};
constexpr Gap nextGap(std::string_view text, std::size_t from) {
    const auto open = text.find('{', from);
    if (open == text.npos) return {text.npos, {}};
    return {open, text.substr(open + 1, text.find('}', open) - open - 1)};
}

constexpr std::size_t gapCount(std::string_view text) {
    std::size_t count = 0;
    for (auto gap = nextGap(text, 0); gap.position != text.npos;
         gap = nextGap(text, gap.position + 1))
        ++count;
    return count;
}

}  // namespace sentences

// A sentence of the catalogue with its gaps filled: what the model, the stores and the adapters
// publish, and what an error says. Made by the functions of `say` only, so a sentence that the
// catalogue lacks does not compile. A plain value of any thread.
class Message {
public:
    // Words that are shown as they are (a name, a number, a path), or a sentence without gaps,
    // which is translated.
    using Argument = std::variant<std::string, Sentence>;

    Message() = default;  // the empty message

    Sentence id() const { return id_; }
    bool is(Sentence sentence) const { return id_ == sentence; }
    bool isEmpty() const { return id_ == Sentence::nothing; }

    // The same with another sentence after it; the id stays.
    Message followedBy(Message next) const;

    // Complete, in English.
    std::string english() const;
    // Complete, from templates in another language: `translate` returns that of a sentence.
    std::string text(const std::function<std::string(Sentence)>& translate) const;

    bool operator==(const Message&) const = default;

private:
    template <Sentence>
    friend class SentenceMaker;
    Message(Sentence id, std::vector<Argument> arguments)
        : id_(id), arguments_(std::move(arguments)) {}

    Sentence id_ = Sentence::nothing;
    std::vector<Argument> arguments_;  // in the order in which the English template has its gaps
    std::vector<Message> following_;
};

// Writes the message in English, for logs and failed tests.
std::ostream& operator<<(std::ostream& out, const Message& message);

// Makes the message of one sentence from as many arguments as its template has gaps.
template <Sentence id>
class SentenceMaker {
public:
    template <class... Arguments>
        requires(sizeof...(Arguments) == sentences::gapCount(sentences::english(id)))
    Message operator()(Arguments&&... arguments) const {
        return Message(id, {argument(std::forward<Arguments>(arguments))...});
    }

private:
    static Message::Argument argument(std::string words) { return words; }
    static Message::Argument argument(Sentence sentence) { return sentence; }
    template <std::same_as<Message::Argument> Either>
    static Message::Argument argument(Either either) {
        return either;
    }
    static Message::Argument argument(std::integral auto number) { return std::to_string(number); }
};

// say::dictatingInto(app) and so on.
namespace say {
#define SENTENCE(id, english) inline constexpr SentenceMaker<Sentence::id> id;
#include "QuorviCore/messages/Sentences.inc"
#undef SENTENCE

// Words that are not the program's own, such as those of a system's error; never a literal.
inline Message verbatim(std::string words) {
    return SentenceMaker<Sentence::verbatim>()(std::move(words));
}
template <std::size_t size>
Message verbatim(const char (&)[size]) = delete;
}  // namespace say

}  // namespace quorvi
