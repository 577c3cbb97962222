#include "Quorvi/ui/translations/ShownMessage.h"

#include <QCoreApplication>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace quorvi {

namespace {

QString translated(std::string_view template_) {
    return QCoreApplication::translate("Model", std::string(template_).c_str());
}

// What fills the gaps of a sentence when the text is of its template.
std::optional<std::vector<std::string_view>> gapsOf(std::string_view text,
                                                    std::string_view template_) {
    std::vector<std::string_view> gaps;
    std::size_t done = 0;
    for (auto gap = sentences::nextGap(template_, 0);; gap = sentences::nextGap(template_, done)) {
        const bool last = gap.position == template_.npos;
        const auto fixed = template_.substr(done, last ? template_.npos : gap.position - done);
        if (done == 0) {
            if (!text.starts_with(fixed)) return std::nullopt;
            text.remove_prefix(fixed.size());
        } else {
            const auto end =
                last ? text.size() - std::min(fixed.size(), text.size()) : text.find(fixed);
            if (end == 0 || end == text.npos || (last && !text.ends_with(fixed)))
                return std::nullopt;
            gaps.push_back(text.substr(0, end));
            text.remove_prefix(end + fixed.size());
        }
        if (last) return gaps.empty() ? std::nullopt : std::optional(gaps);
        done = gap.position + gap.name.size() + 2;
    }
}

}  // namespace

QString shown(const Message& message) {
    return QString::fromStdString(message.text(
        [](Sentence sentence) { return translated(sentences::english(sentence)).toStdString(); }));
}

QString modelText(std::string_view text) {
    const auto whole = translated(text);
    const auto plain = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (whole != plain) return whole;
    for (const auto source : sentences::templates) {
        if (source == sentences::english(Sentence::verbatim)) continue;
        const auto gaps = gapsOf(text, source);
        if (!gaps) continue;
        auto sentence = translated(source);
        std::size_t at = 0;
        QString result;
        const auto filled = sentence.toStdString();
        std::size_t done = 0;
        for (auto gap = sentences::nextGap(filled, 0); gap.position != filled.npos;
             gap = sentences::nextGap(filled, gap.position + 1)) {
            result += QString::fromStdString(filled.substr(done, gap.position - done));
            if (at < gaps->size()) result += translated((*gaps)[at++]);
            done = gap.position + gap.name.size() + 2;
        }
        return result + QString::fromStdString(filled.substr(done));
    }
    return plain;
}

}  // namespace quorvi
