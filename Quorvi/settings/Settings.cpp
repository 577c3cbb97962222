#include "Quorvi/settings/Settings.h"

#include <utility>

namespace quorvi {

std::optional<SettingValue> Settings::stored(const AnySetting& setting) const {
    const auto value = preferences_->value(setting.key());
    return value ? setting.accepted(*value) : std::nullopt;
}

void Settings::store(const AnySetting& setting, const SettingValue& value) {
    const auto current = stored(setting);
    // If the preferences could not be read, the default need not be what the user had chosen.
    if (current ? *current == value
                : preferences_->couldBeRead() && setting.defaultValue() == value)
        return;
    preferences_->set(setting.key(), value);
}

SettingValues Settings::travelling() const {
    SettingValues values;
    for (const auto* setting : allSettings)
        if (setting->scope() == SettingScope::user)
            values.emplace(setting->key(), stored(*setting).value_or(setting->defaultValue()));
    return values;
}

void Settings::apply(const SettingValues& values) {
    for (const auto* setting : allSettings) {
        const auto given = values.find(setting->key());
        if (setting->scope() != SettingScope::user || given == values.end()) continue;
        if (const auto value = setting->accepted(given->second)) store(*setting, *value);
    }
}

Subscription Settings::onChange(std::vector<const AnySetting*> settings,
                                std::function<void()> observer) const {
    const auto look = [view = *this, settings = std::move(settings)] {
        std::vector<std::optional<SettingValue>> values;
        for (const auto* setting : settings) values.push_back(view.stored(*setting));
        return values;
    };
    return preferences_->onChange([look, seen = look(), observer = std::move(observer)]() mutable {
        auto now = look();
        if (now == seen) return;
        seen = std::move(now);
        observer();
    });
}

}  // namespace quorvi
