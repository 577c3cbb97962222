#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <variant>

#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// A value of one of the types that preferences are stored as.
using SettingValue = std::variant<std::string, bool, std::int64_t, Bytes>;

// By key.
using SettingValues = std::map<std::string, SettingValue, std::less<>>;

}  // namespace quorvi
