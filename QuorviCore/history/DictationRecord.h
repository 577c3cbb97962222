#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

// One completed dictation as it is kept.
struct DictationRecord {
    std::string id = newUuid();
    Date date;
    std::optional<std::string> text;  // after the correction rules
    double audioSeconds = 0;
    std::string appName;
    std::string language;  // raw value of the DictationLanguage used
    std::string modelID;   // raw value of the TranscriptionModel used

    bool operator==(const DictationRecord&) const = default;
};

}  // namespace quorvi
