#pragma once

#include <cstdint>
#include <vector>

namespace quorvi {

using Bytes = std::vector<std::uint8_t>;

}  // namespace quorvi
