#include "QuorviCore/settings/RecordingSoundStyle.h"

namespace quorvi {

std::string_view rawValue(RecordingSoundStyle style) {
    switch (style) {
        case RecordingSoundStyle::classic:
            return "classic";
        case RecordingSoundStyle::soft:
            return "soft";
        case RecordingSoundStyle::chime:
            return "chime";
        case RecordingSoundStyle::click:
            return "click";
        case RecordingSoundStyle::silent:
            break;
    }
    return "silent";
}

Message title(RecordingSoundStyle style) {
    switch (style) {
        case RecordingSoundStyle::classic:
            return say::soundClassic();
        case RecordingSoundStyle::soft:
            return say::soundSoft();
        case RecordingSoundStyle::chime:
            return say::soundChime();
        case RecordingSoundStyle::click:
            return say::soundClick();
        case RecordingSoundStyle::silent:
            break;
    }
    return say::soundSilent();
}

std::optional<RecordingSoundStyle> recordingSoundStyleFromRawValue(std::string_view raw) {
    for (auto style : allRecordingSoundStyles)
        if (raw == rawValue(style)) return style;
    return std::nullopt;
}

}  // namespace quorvi
