#pragma once

#include <vector>

#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

// The built-in rules: how the speech service spells the brand name in Greek letters. Their ids are
// the same on every machine, so synchronised lists contain them once.
std::vector<TextCorrection> tarnelCorrections(Date now);

}  // namespace quorvi
