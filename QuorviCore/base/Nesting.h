#pragma once

#include <cstddef>

namespace quorvi {

// Nothing that is read here may be nested deeper, whatever its format: reading, writing and
// destroying a value recurses.
inline constexpr std::size_t greatestDepth = 64;

}  // namespace quorvi
