#pragma once

#include <string_view>

namespace quorvi {

// The name by which the user's keychain and desktop know this application.
inline constexpr std::string_view bundleIdentifier = "app.quorvi.Quorvi";

}  // namespace quorvi
