#include "Quorvi/corrections/TarnelCorrections.h"

namespace quorvi {

std::vector<TextCorrection> tarnelCorrections(Date now) {
    return {{.id = "6C67A4E1-35AB-43E6-AB6F-46D06D4DA217",
             .original = "τάνελ",
             .replacement = "tarnel",
             .updatedAt = now},
            {.id = "BC138878-2A27-42CA-B53B-062EB4548201",
             .original = "δάνελ",
             .replacement = "tarnel",
             .updatedAt = now}};
}

}  // namespace quorvi
