#include "Quorvi/platform/linux/atspi/AtspiChildren.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace quorvi::atspi {
namespace {

constexpr auto limit = static_cast<std::int32_t>(childrenLimit);

// The calls that yield the last children of an object with `count` of them.
std::vector<Call> childCalls(const ObjectRef& object, std::int32_t count, States states) {
    std::vector<Call> calls;
    if (count <= 0) return calls;
    if (count <= limit) {
        calls.push_back({object, accessibleInterface, "GetChildren", arguments()});
    } else if (!states.has(State::managesDescendants)) {
        for (auto index = count - limit; index < count; ++index)
            calls.push_back({object, accessibleInterface, "GetChildAtIndex", arguments(index)});
    }
    return calls;
}

// The objects in the answer to one of those calls.
std::vector<ObjectRef> objectsIn(const Variant& reply) {
    auto objects = readObjects(reply).value_or(std::vector<ObjectRef>{});
    if (auto one = readObject(reply)) objects.push_back(std::move(*one));
    std::erase_if(objects, [](const ObjectRef& object) { return object.isNull(); });
    return objects;
}

}  // namespace

std::vector<std::vector<ObjectRef>> lastChildren(AtspiPeers& peers,
                                                 const std::vector<ObjectRef>& objects,
                                                 TimePoint deadline) {
    std::vector<Call> questions;
    for (const auto& object : objects) {
        questions.push_back(propertyCall(object, accessibleInterface, "ChildCount"));
        questions.push_back({object, accessibleInterface, "GetState", arguments()});
    }
    const auto answers = peers.callAll(std::move(questions), deadline);
    std::vector<Call> calls;
    std::vector<std::size_t> parents;  // of each call
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const auto count = readInteger(answers[2 * i]).value_or(0);
        const auto states = readStates(answers[2 * i + 1]).value_or(States{});
        for (auto& call : childCalls(objects[i], count, states)) {
            calls.push_back(std::move(call));
            parents.push_back(i);
        }
    }
    const auto replies = peers.callAll(std::move(calls), deadline);
    std::vector<std::vector<ObjectRef>> children(objects.size());
    for (std::size_t i = 0; i < replies.size(); ++i)
        for (auto& child : objectsIn(replies[i])) {
            auto& siblings = children[parents[i]];
            if (siblings.size() < childrenLimit) siblings.push_back(std::move(child));
        }
    return children;
}

}  // namespace quorvi::atspi
