#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

// Encodes a record's type, id and change tag, without its payload. Stored for each item, to save
// the item's next version.
std::string encodeRecordFields(const CloudRecord& record);
// Returns nullopt for anything that encodeRecordFields() does not write.
std::optional<CloudRecord> decodeRecordFields(std::string_view fields);

}  // namespace quorvi
