#pragma once

#include <string_view>

namespace quorvi {

// The application id, as used in the keychain and by the desktop.
inline constexpr std::string_view bundleIdentifier = "app.quorvi.Quorvi";

}  // namespace quorvi
