#include "QuorviCore/settings/RecordingTheme.h"

namespace quorvi {

std::string_view rawValue(RecordingTheme theme) {
    switch (theme) {
        case RecordingTheme::glass:
            return "glass";
        case RecordingTheme::midnight:
            return "midnight";
        case RecordingTheme::paper:
            break;
    }
    return "paper";
}

Message title(RecordingTheme theme) {
    switch (theme) {
        case RecordingTheme::glass:
            return say::themeGlass();
        case RecordingTheme::midnight:
            return say::themeMidnight();
        case RecordingTheme::paper:
            break;
    }
    return say::themePaper();
}

Message detail(RecordingTheme theme) {
    switch (theme) {
        case RecordingTheme::glass:
            return say::themeGlassDetail();
        case RecordingTheme::midnight:
            return say::themeMidnightDetail();
        case RecordingTheme::paper:
            break;
    }
    return say::themePaperDetail();
}

std::optional<RecordingTheme> recordingThemeFromRawValue(std::string_view raw) {
    for (auto theme : allRecordingThemes)
        if (raw == rawValue(theme)) return theme;
    return std::nullopt;
}

}  // namespace quorvi
