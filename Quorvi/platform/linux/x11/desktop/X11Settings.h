#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace quorvi {

// Returns a number from a serialised XSETTINGS list; nullopt if it is missing or the list is
// invalid.
std::optional<std::int32_t> x11Setting(std::span<const std::uint8_t> list, std::string_view name);

// Whether the desktop's settings turn animations off. Waits for the X server; not for the main
// thread.
bool x11ReducesMotion();

}  // namespace quorvi
