#include "Quorvi/platform/linux/wayland/sway/SwayTree.h"

#include "QuorviCore/json/JsonReading.h"

namespace quorvi {
namespace {

using Node = rapidjson::Value;

std::string textOf(const Node& node, const char* name) {
    const auto found = node.FindMember(name);
    return found != node.MemberEnd() && found->value.IsString() ? found->value.GetString() : "";
}

std::string className(const Node& node) {
    if (auto id = textOf(node, "app_id"); !id.empty()) return id;
    const auto properties = node.FindMember("window_properties");
    return properties != node.MemberEnd() && properties->value.IsObject()
               ? textOf(properties->value, "class")
               : std::string();
}

// The parser limits the depth.
const Node* focusedNode(const Node& node) {
    if (!node.IsObject()) return nullptr;
    const auto focused = node.FindMember("focused");
    if (focused != node.MemberEnd() && focused->value.IsTrue()) return &node;
    for (const auto* children : {"nodes", "floating_nodes"}) {
        const auto found = node.FindMember(children);
        if (found == node.MemberEnd() || !found->value.IsArray()) continue;
        for (const auto& child : found->value.GetArray())
            if (const auto* inside = focusedNode(child)) return inside;
    }
    return nullptr;
}

}  // namespace

std::optional<FocusedWindow> focusedSwayWindow(std::string_view tree) {
    rapidjson::Document document;
    if (!json::parse(document, tree)) return std::nullopt;
    const auto* node = focusedNode(document);
    if (!node) return std::nullopt;
    const auto pid = node->FindMember("pid");
    if (pid == node->MemberEnd() || !pid->value.IsInt() || pid->value.GetInt() <= 0)
        return std::nullopt;
    const auto id = node->FindMember("id");
    return FocusedWindow{
        pid->value.GetInt(), className(*node),
        id != node->MemberEnd() && id->value.IsUint64() ? id->value.GetUint64() : 0};
}

}  // namespace quorvi
