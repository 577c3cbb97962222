#include "Quorvi/system/MemoryPreferences.h"

#include <utility>

namespace quorvi {

std::optional<SettingValue> MemoryPreferences::value(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void MemoryPreferences::set(std::string_view key, SettingValue value) {
    const auto found = values_.find(key);
    if (found == values_.end()) {
        values_.emplace(key, std::move(value));
    } else if (found->second != value) {
        found->second = std::move(value);
    } else {
        return;
    }
    changes_.notify();
}

void MemoryPreferences::remove(std::string_view key) {
    const auto found = values_.find(key);
    if (found == values_.end()) return;
    values_.erase(found);
    changes_.notify();
}

Subscription MemoryPreferences::onChange(std::function<void()> observer) {
    return changes_.subscribe(std::move(observer));
}

}  // namespace quorvi
