#include "QuorviCore/corrections/CorrectionContext.h"

#include "QuorviCore/text/Characters.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

// A byte is at most one unit, so most fields need no counting.
bool isWithinLimit(std::string_view field) {
    return field.size() <= static_cast<std::size_t>(CorrectionContext::fieldLimit) ||
           text::utf16Length(field) <= CorrectionContext::fieldLimit;
}

struct Surroundings {
    std::string_view prefix;
    std::string_view suffix;
};

std::optional<Surroundings> surroundings(std::string_view field, Utf16Range selection) {
    if (!isWithinLimit(field)) return std::nullopt;
    if (selection.location < 0 || selection.length < 0) return std::nullopt;
    const auto begin = text::offsetOfUtf16(field, selection.location);
    if (!begin) return std::nullopt;
    const auto selected = text::offsetOfUtf16(field.substr(*begin), selection.length);
    if (!selected) return std::nullopt;
    const std::size_t end = *begin + *selected;
    if (!text::isCharacterBoundary(field, *begin) || !text::isCharacterBoundary(field, end))
        return std::nullopt;
    return Surroundings{field.substr(0, *begin), field.substr(end)};
}

// Returns the text between the shared whole characters at both ends, compared as bytes.
std::optional<std::string_view> between(std::string_view field, std::string_view prefix,
                                        std::string_view suffix) {
    if (field.size() < prefix.size() + suffix.size()) return std::nullopt;
    if (!field.starts_with(prefix) || !field.ends_with(suffix)) return std::nullopt;
    if (!text::isCharacterBoundary(field, prefix.size()) ||
        !text::isCharacterBoundary(field, field.size() - suffix.size()))
        return std::nullopt;
    return field.substr(prefix.size(), field.size() - prefix.size() - suffix.size());
}

}  // namespace

std::optional<CorrectionContext> CorrectionContext::make(std::string_view fieldBefore,
                                                         Utf16Range selection,
                                                         std::string transcript) {
    if (transcript.empty()) return std::nullopt;
    const auto around = surroundings(fieldBefore, selection);
    if (!around) return std::nullopt;
    return CorrectionContext(std::string(around->prefix), std::move(transcript),
                             std::string(around->suffix));
}

std::optional<CorrectionContext> CorrectionContext::verified(
    const std::optional<std::string>& fieldBefore, const std::optional<Utf16Range>& selection,
    std::string transcript, std::string_view fieldAfter) {
    if (!fieldBefore || transcript.empty()) return std::nullopt;
    if (selection) {
        const auto around = surroundings(*fieldBefore, *selection);
        if (around && text::equalJoined(around->prefix, transcript, around->suffix, fieldAfter))
            return CorrectionContext(std::string(around->prefix), std::move(transcript),
                                     std::string(around->suffix));
    }
    if (text::equal(fieldAfter, transcript) && !text::equal(fieldAfter, *fieldBefore))
        return CorrectionContext({}, std::move(transcript), {});
    return std::nullopt;
}

std::optional<std::string> CorrectionContext::editedTranscript(std::string_view field) const {
    if (!isWithinLimit(field)) return std::nullopt;
    if (const auto edited = between(field, prefix_, suffix_)) return std::string(*edited);
    // The application may have stored an equivalent form of the text. Byte-equal text whose ends
    // are not at character boundaries is refused in Form C too.
    const std::string normalized = text::toNfc(field);
    const std::string prefix = text::toNfc(prefix_);
    const std::string suffix = text::toNfc(suffix_);
    const auto edited = between(normalized, prefix, suffix);
    return edited ? std::optional<std::string>(*edited) : std::nullopt;
}

}  // namespace quorvi
