#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiProtocol.h"
#include "Quorvi/platform/linux/gio/GLibHandles.h"

// Messages of the accessibility bus, without GLib's headers. The readers take the body of a reply,
// a tuple of any shape, and return nullopt if it is null or has other types than expected.
namespace quorvi::atspi {

using Variant = GLibHandle<GVariant>;

// Arguments of calls.
Variant arguments();
Variant arguments(std::int32_t a);
Variant arguments(std::int32_t a, std::int32_t b);
Variant arguments(std::string_view a);
Variant arguments(std::string_view a, std::string_view b);

std::optional<std::string> readText(const Variant& reply);
std::optional<std::uint32_t> readUnsigned(const Variant& reply);
std::optional<std::int32_t> readInteger(const Variant& reply);
std::optional<States> readStates(const Variant& reply);
std::optional<ObjectRef> readObject(const Variant& reply);
std::optional<std::vector<ObjectRef>> readObjects(const Variant& reply);
std::optional<std::vector<std::string>> readTexts(const Variant& reply);

struct Span {
    std::int32_t start = 0;
    std::int32_t end = 0;
    bool operator==(const Span&) const = default;
};
std::optional<Span> readSpan(const Variant& reply);

}  // namespace quorvi::atspi
