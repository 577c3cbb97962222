#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

// A cloud record without its payload as bytes to be kept: what it is, and which version of it was
// seen last.
std::string encodeRecordFields(const CloudRecord& record);
// Nothing for anything that is no such bytes.
std::optional<CloudRecord> decodeRecordFields(std::string_view fields);

}  // namespace quorvi
