#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

// The JSON form of rules in storage and synchronisation: sorted keys and no white space, so that
// equal rules have equal bytes. Encoding throws QuorviError if a date is not finite; malformed
// UTF-8 becomes U+FFFD. Decoding returns nullopt if anything is missing, of the wrong type or
// malformed; unknown keys are ignored.
std::string encodeCorrection(const TextCorrection& rule);
std::string encodeCorrections(const std::vector<TextCorrection>& rules);

std::optional<TextCorrection> decodeCorrection(std::string_view json);
std::optional<std::vector<TextCorrection>> decodeCorrections(std::string_view json);

}  // namespace quorvi
