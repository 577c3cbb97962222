#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/Preferences.h"

namespace quorvi {

// Preferences in memory only, for runs that leave no trace and for tests. Main thread; the values
// die with the object.
class MemoryPreferences : public Preferences {
public:
    std::optional<SettingValue> value(std::string_view key) const override;
    bool contains(std::string_view key) const override { return values_.contains(key); }
    void set(std::string_view key, SettingValue value) override;
    void remove(std::string_view key) override;

    bool couldBeRead() const override { return couldBeRead_; }
    std::optional<Message> persistenceError() const override { return std::nullopt; }
    void flush() override {}
    std::function<bool()> flusher() override {
        return [] { return true; };
    }

    // Behaves as if stored values could not be read.
    void setCouldBeRead(bool could) { couldBeRead_ = could; }

    // Setting the present value is not a change.
    [[nodiscard]] Subscription onChange(std::function<void()> observer) override;

private:
    SettingValues values_;
    bool couldBeRead_ = true;
    Observable changes_;
};

}  // namespace quorvi
