#include "Quorvi/dictation/RecordingTheme.h"

namespace quorvi {

namespace {

struct Texts {
    std::string_view raw;
    std::string_view title;
    std::string_view detail;
};

constexpr Texts texts[] = {
    {"glass", "Glass", "Frosted glass, blue accents, and a clean native feel."},
    {"midnight", "Midnight", "A dark capsule with bright mint accents."},
    {"paper", "Paper", "Warm ivory, ink lettering, and terracotta accents."},
};

const Texts& of(RecordingTheme theme) {
    return texts[static_cast<std::size_t>(theme)];
}

}  // namespace

std::string_view rawValue(RecordingTheme theme) {
    return of(theme).raw;
}
std::string_view title(RecordingTheme theme) {
    return of(theme).title;
}
std::string_view detail(RecordingTheme theme) {
    return of(theme).detail;
}

std::optional<RecordingTheme> recordingThemeFromRawValue(std::string_view raw) {
    for (auto theme : allRecordingThemes)
        if (raw == rawValue(theme)) return theme;
    return std::nullopt;
}

}  // namespace quorvi
