#include "Quorvi/ui/translations/ModelText.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/ui/translations/ModelTexts.h"

namespace quorvi {

namespace {

// A listed text with gaps: what stands before the first, between them and behind the last.
struct Pattern {
    const char* source;
    std::vector<std::string_view> fixed;
};

const std::vector<Pattern>& patterns() {
    static const auto made = [] {
        std::vector<Pattern> all;
        for (const std::string_view source : modelTexts) {
            Pattern pattern{source.data(), {}};
            std::size_t begin = 0;
            for (auto gap = source.find('%'); gap != source.npos; gap = source.find('%', begin)) {
                pattern.fixed.push_back(source.substr(begin, gap - begin));
                begin = gap + 2;  // a gap is a percent sign and a digit
            }
            pattern.fixed.push_back(source.substr(begin));
            if (pattern.fixed.size() > 1) all.push_back(std::move(pattern));
        }
        return all;
    }();
    return made;
}

// What fills the gaps when the text is of that pattern.
std::optional<std::vector<std::string_view>> gapsOf(std::string_view text, const Pattern& pattern) {
    const auto& fixed = pattern.fixed;
    if (!text.starts_with(fixed.front())) return std::nullopt;
    text.remove_prefix(fixed.front().size());
    std::vector<std::string_view> gaps;
    for (std::size_t i = 1; i < fixed.size(); ++i) {
        const bool last = i + 1 == fixed.size();
        if (last && !text.ends_with(fixed[i])) return std::nullopt;
        const auto end = last ? text.size() - fixed[i].size() : text.find(fixed[i]);
        if (end == 0 || end == text.npos) return std::nullopt;
        gaps.push_back(text.substr(0, end));
        text.remove_prefix(end + fixed[i].size());
    }
    return gaps;
}

QString translated(const char* source) {
    return QCoreApplication::translate("Model", source);
}

}  // namespace

QString modelText(std::string_view text) {
    const std::string source(text);
    const auto whole = translated(source.c_str());
    const auto plain = QString::fromStdString(source);
    if (whole != plain) return whole;
    for (const auto& pattern : patterns()) {
        const auto gaps = gapsOf(text, pattern);
        if (!gaps) continue;
        auto sentence = translated(pattern.source);
        // All at once, so that a name with a percent sign stays what it is.
        std::array<QString, 2> fills;
        for (std::size_t i = 0; i < std::min(gaps->size(), fills.size()); ++i)
            fills[i] = translated(std::string((*gaps)[i]).c_str());
        return gaps->size() == 1 ? sentence.arg(fills[0]) : sentence.arg(fills[0], fills[1]);
    }
    return plain;
}

}  // namespace quorvi
