#include "QuorviCore/messages/Message.h"

#include <map>
#include <ostream>
#include <utility>

namespace quorvi {

Message Message::followedBy(Message next) const {
    auto both = *this;
    both.following_.push_back(std::move(next));
    return both;
}

std::string Message::english() const {
    return text([](Sentence sentence) { return std::string(sentences::english(sentence)); });
}

std::string Message::text(const std::function<std::string(Sentence)>& translate) const {
    const auto original = sentences::english(id_);
    std::map<std::string_view, std::string> fills;
    auto argument = arguments_.begin();
    for (auto gap = sentences::nextGap(original, 0); gap.position != original.npos;
         gap = sentences::nextGap(original, gap.position + 1), ++argument) {
        const auto* sentence = std::get_if<Sentence>(&*argument);
        fills[gap.name] = sentence ? translate(*sentence) : std::get<std::string>(*argument);
    }
    const auto filled = id_ == Sentence::verbatim ? std::string(original) : translate(id_);
    std::string result;
    std::size_t done = 0;
    for (auto gap = sentences::nextGap(filled, 0); gap.position != filled.npos;
         gap = sentences::nextGap(filled, gap.position + 1)) {
        result.append(filled, done, gap.position - done);
        if (const auto fill = fills.find(gap.name); fill != fills.end()) result += fill->second;
        done = gap.position + gap.name.size() + 2;
    }
    result.append(filled, done);
    for (const auto& next : following_) result += " " + next.text(translate);
    return result;
}

std::ostream& operator<<(std::ostream& out, const Message& message) {
    return out << message.english();
}

}  // namespace quorvi
