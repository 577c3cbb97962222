#include "Quorvi/system/MemoryPreferences.h"

#include <utility>

namespace quorvi {

template <class T>
std::optional<T> MemoryPreferences::find(std::string_view key) const {
    const auto found = values_.find(key);
    if (found == values_.end()) return std::nullopt;
    const auto* value = std::get_if<T>(&found->second);
    return value ? std::optional<T>(*value) : std::nullopt;
}

std::optional<std::string> MemoryPreferences::string(std::string_view key) const {
    return find<std::string>(key);
}
std::optional<bool> MemoryPreferences::boolean(std::string_view key) const {
    return find<bool>(key);
}
std::optional<std::int64_t> MemoryPreferences::integer(std::string_view key) const {
    return find<std::int64_t>(key);
}
std::optional<Bytes> MemoryPreferences::bytes(std::string_view key) const {
    return find<Bytes>(key);
}
bool MemoryPreferences::contains(std::string_view key) const {
    return values_.find(key) != values_.end();
}

void MemoryPreferences::setString(std::string_view key, std::string value) {
    set(key, std::move(value));
}
void MemoryPreferences::setBoolean(std::string_view key, bool value) {
    set(key, value);
}
void MemoryPreferences::setInteger(std::string_view key, std::int64_t value) {
    set(key, value);
}
void MemoryPreferences::setBytes(std::string_view key, Bytes value) {
    set(key, std::move(value));
}

void MemoryPreferences::set(std::string_view key, PreferenceValue value) {
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
