#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "Quorvi/system/MemoryPreferences.h"

namespace quorvi {

// Preferences whose changes last as long as the object and never reach the stored ones below, for
// commands that only read. Main thread; `below` outlives the object.
class PreferencesOverlay : public MemoryPreferences {
public:
    explicit PreferencesOverlay(const Preferences& below) : below_(below) {}

    std::optional<SettingValue> value(std::string_view key) const override {
        if (changed_.contains(key)) return MemoryPreferences::value(key);
        return below_.value(key);
    }
    bool contains(std::string_view key) const override {
        return changed_.contains(key) ? MemoryPreferences::contains(key) : below_.contains(key);
    }
    void set(std::string_view key, SettingValue value) override {
        changed_.emplace(key);
        MemoryPreferences::set(key, std::move(value));
    }
    void remove(std::string_view key) override {
        changed_.emplace(key);
        MemoryPreferences::remove(key);
    }
    bool couldBeRead() const override { return below_.couldBeRead(); }
    std::optional<Message> persistenceError() const override { return below_.persistenceError(); }

private:
    const Preferences& below_;
    std::set<std::string, std::less<>> changed_;
};

}  // namespace quorvi
