#include "Quorvi/platform/linux/atspi/AtspiFocusFinder.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <iterator>
#include <utility>

#include "Quorvi/platform/linux/atspi/AtspiChildren.h"

namespace quorvi::atspi {
namespace {

constexpr std::size_t walkLimit = 1'000;  // objects; an editor shows some hundred
constexpr std::size_t pieceSize = 32;     // objects asked at a time

// How well an object fits what the user types into. A focused row, tab or panel may stand beside
// the focused field of the same window.
int rank(Role role, States states) {
    if (isSecure(role) || states.has(State::editable)) return 2;
    return role == Role::terminal ? 1 : 0;
}

}  // namespace

std::vector<std::string> AtspiFocusFinder::namesOf(pid_t pid, TimePoint deadline) {
    auto names = peers_.namesOf(pid, deadline);
    if (!names.empty()) return names;
    if (const auto window = activeWindowIn(peers_.proxiedNamesOf(pid, deadline), deadline))
        names.push_back(window->bus);
    return names;
}

std::optional<ObjectRef> AtspiFocusFinder::focusedObjectOf(pid_t pid, TimePoint deadline) {
    for (const auto& bus : namesOf(pid, deadline))
        if (auto object = focusedIn(bus, deadline)) return object;
    return std::nullopt;
}

std::optional<ObjectRef> AtspiFocusFinder::focusedObject(TimePoint deadline) {
    if (const auto active = tracker_.activeApplication())
        if (auto object = focusedIn(*active, deadline)) return object;
    const auto window = activeWindowIn(peers_.allNames(deadline), deadline);
    return window ? focusedIn(window->bus, deadline) : std::nullopt;
}

std::optional<ObjectRef> AtspiFocusFinder::activeWindowOf(pid_t pid, TimePoint deadline) {
    return activeWindowIn(namesOf(pid, deadline), deadline);
}

std::optional<ObjectRef> AtspiFocusFinder::focusedIn(const std::string& bus, TimePoint deadline) {
    for (const auto& candidate : describe(tracker_.focusedOf(bus), deadline))
        if (canHoldFocus(candidate.role, candidate.states)) return innermost(candidate, deadline);
    const auto window = activeWindowIn({bus}, deadline);
    if (!window) return std::nullopt;
    auto object = search(*window, deadline);
    if (object) tracker_.found(*object);
    return object;
}

// Qt's editable combo box takes the focus for the line inside it, which has the text. Since Qt 6.8
// it says itself that it is editable.
ObjectRef AtspiFocusFinder::innermost(const Candidate& focused, TimePoint deadline) {
    if (focused.role == Role::comboBox)
        for (const auto& child : describe(childrenOf({focused.object}, deadline), deadline))
            if (canHoldFocus(child.role, child.states) && child.states.has(State::editable))
                return child.object;
    return focused.object;
}

std::optional<ObjectRef> AtspiFocusFinder::activeWindowIn(const std::vector<std::string>& names,
                                                          TimePoint deadline) {
    std::vector<ObjectRef> tracked;
    for (const auto& name : names)
        if (auto window = tracker_.activeWindowOf(name)) tracked.push_back(std::move(*window));
    for (const auto& candidate : describe(tracked, deadline))
        if (candidate.states.has(State::active)) return candidate.object;

    std::vector<ObjectRef> roots;
    for (const auto& name : names) roots.push_back({name, rootPath});
    // One hung application among many must not use up the time of the others.
    const auto now = std::chrono::steady_clock::now();
    const auto limit = names.size() > 1 ? now + (deadline - now) / 2 : deadline;
    for (const auto& candidate : describe(childrenOf(roots, limit), deadline))
        if (candidate.states.has(State::active)) return candidate.object;
    return std::nullopt;
}

std::optional<ObjectRef> AtspiFocusFinder::search(const ObjectRef& window, TimePoint deadline) {
    const auto found = walk(window, deadline);
    const auto best =
        std::max_element(found.begin(), found.end(), [](const Candidate& a, const Candidate& b) {
            return rank(a.role, a.states) < rank(b.role, b.states);
        });
    return best == found.end() ? std::nullopt : std::optional(best->object);
}

std::vector<AtspiFocusFinder::Candidate> AtspiFocusFinder::walk(const ObjectRef& window,
                                                                TimePoint deadline) {
    // Level by level. Asked in small pieces, so that an application which is too slow for the
    // deadline is left with one piece of work and not with a thousand.
    std::vector<Candidate> found;
    std::deque<ObjectRef> waiting{window};
    for (std::size_t visited = 0; !waiting.empty() && visited < walkLimit;) {
        if (std::chrono::steady_clock::now() >= deadline) break;
        const auto end =
            waiting.begin() + static_cast<std::ptrdiff_t>(std::min(pieceSize, waiting.size()));
        const std::vector<ObjectRef> piece(waiting.begin(), end);
        waiting.erase(waiting.begin(), end);
        visited += piece.size();
        std::vector<ObjectRef> parents;
        for (const auto& candidate : describe(piece, deadline)) {
            if (canHoldFocus(candidate.role, candidate.states)) found.push_back(candidate);
            if (mayContainFocus(candidate.role, candidate.states))
                parents.push_back(candidate.object);
        }
        for (auto& child : childrenOf(parents, deadline)) waiting.push_back(std::move(child));
    }
    return found;
}

std::vector<AtspiFocusFinder::Candidate> AtspiFocusFinder::describe(
    const std::vector<ObjectRef>& objects, TimePoint deadline) {
    std::vector<Call> calls;
    for (const auto& object : objects) {
        calls.push_back({object, accessibleInterface, "GetRole", arguments()});
        calls.push_back({object, accessibleInterface, "GetState", arguments()});
    }
    const auto replies = peers_.callAll(std::move(calls), deadline);
    std::vector<Candidate> described;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const auto role = readUnsigned(replies[2 * i]);
        const auto states = readStates(replies[2 * i + 1]);
        if (role && states) described.push_back({objects[i], static_cast<Role>(*role), *states});
    }
    return described;
}

std::vector<ObjectRef> AtspiFocusFinder::childrenOf(const std::vector<ObjectRef>& objects,
                                                    TimePoint deadline) {
    std::vector<ObjectRef> all;
    for (auto& children : lastChildren(peers_, objects, deadline))
        std::move(children.begin(), children.end(), std::back_inserter(all));
    return all;
}

}  // namespace quorvi::atspi
