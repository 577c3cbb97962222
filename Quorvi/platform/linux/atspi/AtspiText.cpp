#include "Quorvi/platform/linux/atspi/AtspiText.h"

#include <utility>

#include "Quorvi/platform/linux/atspi/AtspiChromium.h"
#include "Quorvi/platform/linux/atspi/AtspiRichText.h"
#include "QuorviCore/text/Text.h"

namespace quorvi::atspi {
namespace {

// No caller wants a longer text. A count in code points is at most that in UTF-16 units.
constexpr std::int32_t countLimit = 100'000;
constexpr std::size_t byteLimit = 400'000;

}  // namespace

std::optional<AtspiText::Facts> AtspiText::readableFacts(const ObjectRef& object, Wanted wanted,
                                                         TimePoint deadline) {
    std::vector<Call> calls;
    calls.push_back({object, accessibleInterface, "GetRole", arguments()});
    calls.push_back({object, accessibleInterface, "GetState", arguments()});
    calls.push_back({object, accessibleInterface, "GetInterfaces", arguments()});
    calls.push_back(propertyCall(object, textInterface, "CharacterCount"));
    if (wanted == Wanted::selection) {
        calls.push_back(propertyCall(object, textInterface, "CaretOffset"));
        calls.push_back({object, textInterface, "GetNSelections", arguments()});
        calls.push_back({object, textInterface, "GetSelection", arguments(0)});
    }
    const auto replies = peers_.callAll(std::move(calls), deadline);

    const auto role = readUnsigned(replies[0]);
    const auto states = readStates(replies[1]);
    auto interfaces = readTexts(replies[2]);
    if (!role || !states || !interfaces) return std::nullopt;
    Facts facts{object, {static_cast<Role>(*role), *states, std::move(*interfaces)}, {}, {}, {}};
    if (isSecure(facts.description.role) || facts.description.role == Role::terminal ||
        !facts.description.offers(textInterface))
        return std::nullopt;
    facts.count = readInteger(replies[3]);
    if (wanted == Wanted::selection) {
        facts.caret = readInteger(replies[4]);
        // GTK 4 answers GetSelection with an error while there is none, others with 0..0.
        if (readInteger(replies[5]).value_or(0) > 0) facts.selected = readSpan(replies[6]);
    }
    return facts;
}

std::optional<std::string> AtspiText::textBetween(const ObjectRef& object, std::int32_t start,
                                                  std::int32_t end, TimePoint deadline) {
    if (start == end) return std::string();
    return readText(
        peers_.call({object, textInterface, "GetText", arguments(start, end)}, deadline));
}

std::optional<std::string> AtspiText::value(const ObjectRef& object, TimePoint deadline) {
    const auto found = readableFacts(object, Wanted::value, deadline);
    if (!found || !found->count || *found->count > countLimit) return std::nullopt;
    // By its length, since entries of GTK 4 answer nothing to "up to the end".
    auto text = textBetween(found->object, 0, *found->count, deadline);
    if (!text || text->size() > byteLimit) return std::nullopt;
    if (found->description.offers(hypertextInterface) &&
        text->find(objectReplacement) != std::string::npos) {
        auto rich = readRichText(peers_, found->object, deadline);
        return rich ? std::optional(std::move(rich->text)) : std::nullopt;
    }
    if (found->description.offers(hypertextInterface) &&
        peers_.isBrowser(found->object.bus, deadline))
        restoreTypedSpaces(*text);
    if (found->description.states.has(State::multiLine) &&
        peers_.isChromium(found->object.bus, deadline))
        dropPlaceholderBreak(*text);
    return text;
}

std::optional<Utf16Range> AtspiText::selection(const ObjectRef& object, TimePoint deadline) {
    const auto found = readableFacts(object, Wanted::selection, deadline);
    // Chromium has a caret in everything, buttons included.
    if (!found || !isEditableText(found->description)) return std::nullopt;
    if (found->description.offers(hypertextInterface) && found->count.value_or(0) <= countLimit) {
        const auto rich = readRichText(peers_, found->object, deadline);
        return rich ? rich->selection : std::nullopt;
    }
    auto span = found->selected;
    if (span && peers_.isChromium(found->object.bus, deadline)) {
        const auto whole = textBetween(found->object, 0, -1, deadline);
        if (!whole) return std::nullopt;
        span = selectionFromChromium(*span, found->caret.value_or(-1), *whole);
        if (!span) return std::nullopt;
    }
    if (!span) {
        if (!found->caret || *found->caret < 0) return std::nullopt;
        span = Span{*found->caret, *found->caret};
    }
    if (span->end < span->start) std::swap(span->start, span->end);
    // Of a text that nobody reads only changes of the range count, in whatever unit.
    if (found->count.value_or(0) > countLimit)
        return Utf16Range{span->start, span->end - span->start};
    // The text up to an offset has the right length whatever unit the offset is in.
    const auto before = textBetween(found->object, 0, span->start, deadline);
    const auto inside = textBetween(found->object, span->start, span->end, deadline);
    if (!before || !inside) return std::nullopt;
    return Utf16Range{text::utf16Length(*before), text::utf16Length(*inside)};
}

}  // namespace quorvi::atspi
