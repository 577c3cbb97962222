#pragma once

#include <optional>
#include <string_view>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

// Compares a transcript as pasted with the transcript as the user has edited it. Pure and
// thread-safe.
struct CorrectionLearning {
    // Returns the rule that one small spelling fix teaches; nullopt for any other edit.
    static std::optional<TextCorrection> suggestion(std::string_view original,
                                                    std::string_view edited, Date now);

    // Whether `to` is a small respelling of `from`, also in another script.
    static bool resemblesSpellingChange(std::string_view from, std::string_view to);
};

}  // namespace quorvi
