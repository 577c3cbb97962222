#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/Preferences.h"

namespace quorvi {

// Preferences in memory only, for runs that leave no trace and for tests. Main thread; the values
// die with the object.
class MemoryPreferences : public Preferences {
public:
    std::optional<std::string> string(std::string_view key) const override;
    std::optional<bool> boolean(std::string_view key) const override;
    std::optional<std::int64_t> integer(std::string_view key) const override;
    std::optional<Bytes> bytes(std::string_view key) const override;
    bool contains(std::string_view key) const override;

    void setString(std::string_view key, std::string value) override;
    void setBoolean(std::string_view key, bool value) override;
    void setInteger(std::string_view key, std::int64_t value) override;
    void setBytes(std::string_view key, Bytes value) override;
    void remove(std::string_view key) override;

    bool couldBeRead() const override { return couldBeRead_; }
    std::optional<std::string> persistenceError() const override { return std::nullopt; }
    void flush() override {}
    std::function<bool()> flusher() override {
        return [] { return true; };
    }

    // Behaves as if stored values could not be read.
    void setCouldBeRead(bool could) { couldBeRead_ = could; }

    // Setting the present value is not a change.
    [[nodiscard]] Subscription onChange(std::function<void()> observer) override;

private:
    template <class T>
    std::optional<T> find(std::string_view key) const;
    void set(std::string_view key, PreferenceValue value);

    std::map<std::string, PreferenceValue, std::less<>> values_;
    bool couldBeRead_ = true;
    Observable changes_;
};

}  // namespace quorvi
