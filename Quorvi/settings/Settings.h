#pragma once

#include <functional>
#include <optional>
#include <type_traits>
#include <vector>

#include "Quorvi/platform/Preferences.h"
#include "QuorviCore/settings/Setting.h"

namespace quorvi {

// The user's settings, by their handles: a typed view of the preferences, which keep the values.
// Any number of them can look at the same preferences, which outlive them. Main thread.
class Settings {
public:
    explicit Settings(Preferences& preferences) : preferences_(&preferences) {}

    // The stored value; the default if there is none, or one that the setting can't have.
    template <class T>
    T get(const Setting<T>& setting) const {
        const auto stored = preferences_->value(setting.key());
        const auto value = stored ? setting.decode(*stored) : std::nullopt;
        return value.value_or(setting.standard());
    }
    // Stores the value, unless it is the current one or can't be stored.
    template <class T>
    void set(const Setting<T>& setting, const std::type_identity_t<T>& value) {
        if (const auto encoded = setting.encode(value)) store(setting, *encoded);
    }
    // Back to the default.
    void reset(const AnySetting& setting) { preferences_->remove(setting.key()); }
    // Whether a value is stored that the setting can have.
    bool isStored(const AnySetting& setting) const { return stored(setting).has_value(); }

    // The settings of the user, which travel between machines, as they are sent.
    SettingValues travelling() const;
    // Stores those values from elsewhere that differ, in the order of the list. A value that is
    // missing, has the wrong type or is not one that the setting can have is left out.
    void apply(const SettingValues& values);

    // Told after the stored value of one of these settings has changed, within the change.
    [[nodiscard]] Subscription onChange(std::vector<const AnySetting*> settings,
                                        std::function<void()> observer) const;

private:
    std::optional<SettingValue> stored(const AnySetting& setting) const;
    void store(const AnySetting& setting, const SettingValue& value);

    Preferences* preferences_;
};

}  // namespace quorvi
