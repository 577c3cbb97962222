#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/async/Date.h"

namespace quorvi {

// One entry of the diagnostic log of automatic learning: what happened and how often, never any
// dictated text.
struct LearningEvent {
    using Counts = std::map<std::string, std::int64_t>;

    Date date{};
    std::string app;   // the target application's name
    std::string code;  // "paste.…" or "observer.…"
    Counts counts;

    bool operator==(const LearningEvent&) const = default;
};

// The JSON form of the log, keys sorted. Decoding returns nullopt if anything is missing or of the
// wrong type.
std::string encodeLearningEvents(const std::vector<LearningEvent>& events);
std::optional<std::vector<LearningEvent>> decodeLearningEvents(std::string_view text);

}  // namespace quorvi
