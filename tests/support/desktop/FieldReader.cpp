#include "tests/support/desktop/FieldReader.h"

namespace quorvi::test {

std::optional<AXElement> FieldReader::waitFor(pid_t pid,
                                              const std::function<bool(const AXElement&)>& wanted) {
    std::optional<AXElement> found;
    const bool good = eventually([&] { return (found = focused(pid)) && wanted(*found); });
    return good ? found : std::nullopt;
}

std::optional<AXElement> FieldReader::find(const AXElement& element, std::string_view wantedRole,
                                           int depth) {
    if (role(element) == wantedRole) return element;
    const auto children = get<std::vector<AXElement>>(element, "AXChildren");
    if (!children || depth == 0) return std::nullopt;
    for (const auto& child : *children)
        if (auto found = find(child, wantedRole, depth - 1)) return found;
    return std::nullopt;
}

}  // namespace quorvi::test
