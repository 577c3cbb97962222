#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

// The JSON form of rules, as they are stored and synchronised: keys sorted, no white space, so
// equal rules give identical bytes. Encoding throws QuorviError for a date that is not a finite
// number; malformed UTF-8 is written as U+FFFD. Decoding fails as a whole when anything is missing,
// of the wrong type or not well-formed; unknown keys are ignored.
std::string encodeCorrection(const TextCorrection& rule);
std::string encodeCorrections(const std::vector<TextCorrection>& rules);

std::optional<TextCorrection> decodeCorrection(std::string_view json);
std::optional<std::vector<TextCorrection>> decodeCorrections(std::string_view json);

}  // namespace quorvi
