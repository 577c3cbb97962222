#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace quorvi {

// A number out of a serialised list of the desktop's settings; nothing when it is not there, or the
// list makes no sense.
std::optional<std::int32_t> x11Setting(std::span<const std::uint8_t> list, std::string_view name);

// Whether the desktop has been told to do without animations. Asks the X server, so not for the
// main thread.
bool x11ReducesMotion();

}  // namespace quorvi
