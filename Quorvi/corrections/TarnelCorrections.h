#pragma once

#include <vector>

#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

// The rules that the product brings along: how the speech service spells the brand word in Greek
// letters. Their ids are the same on every machine, so synchronised lists hold them once.
std::vector<TextCorrection> tarnelCorrections(Date now);

}  // namespace quorvi
