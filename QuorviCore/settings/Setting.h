#pragma once

#include <optional>
#include <string_view>

#include "QuorviCore/settings/SettingKinds.h"

namespace quorvi {

enum class SettingScope {
    user,     // travels to the user's other machines, and is exported
    machine,  // a choice for this machine alone
    state,    // what the program remembers, not a choice of the user's
};

// An entry of the list of settings, whatever its type. A constant, for any thread.
class AnySetting {
public:
    std::string_view key() const { return key_; }
    SettingScope scope() const { return scope_; }
    std::string_view meaning() const { return meaning_; }  // for the documentation

    virtual SettingValue defaultValue() const = 0;
    // The value in the form in which it is stored and sent; nullopt if it has the wrong type, or is
    // not one that the setting can have.
    virtual std::optional<SettingValue> accepted(const SettingValue& value) const = 0;

protected:
    constexpr AnySetting(std::string_view key, SettingScope scope, std::string_view meaning)
        : key_(key), scope_(scope), meaning_(meaning) {}
    ~AnySetting() = default;

private:
    std::string_view key_;
    SettingScope scope_;
    std::string_view meaning_;
};

// The handle of a setting whose values are of type T.
template <class T>
class Setting final : public AnySetting {
public:
    using Value = T;

    template <class Kind>
    constexpr Setting(Kind, std::string_view key, T (*defaultOf)(), SettingScope scope,
                      std::string_view meaning)
        : AnySetting(key, scope, meaning),
          standard_(defaultOf),
          decode_(&Kind::decode),
          encode_(&Kind::encode) {}

    T standard() const { return standard_(); }
    // Each returns nullopt for a value that the setting can't have.
    std::optional<T> decode(const SettingValue& value) const { return decode_(value); }
    std::optional<SettingValue> encode(const T& value) const { return encode_(value); }

    SettingValue defaultValue() const override { return *encode_(standard_()); }
    std::optional<SettingValue> accepted(const SettingValue& value) const override {
        const auto decoded = decode_(value);
        return decoded ? encode_(*decoded) : std::nullopt;
    }

private:
    T (*standard_)();
    std::optional<T> (*decode_)(const SettingValue&);
    std::optional<SettingValue> (*encode_)(const T&);
};

// The handles: setting::mode and so on.
namespace setting {
#define SETTING(key, Kind, standard, scope, meaning)                                      \
    inline constexpr Setting<settingKind::Kind::Value> key{                               \
        settingKind::Kind(), #key, []() -> settingKind::Kind::Value { return standard; }, \
        SettingScope::scope, meaning};
#include "QuorviCore/settings/Settings.inc"
#undef SETTING
}  // namespace setting

// In the order in which values from elsewhere are applied.
inline constexpr const AnySetting* allSettings[] = {
#define SETTING(key, Kind, standard, scope, meaning) &setting::key,
#include "QuorviCore/settings/Settings.inc"
#undef SETTING
};

// Of earlier versions; removed wherever it is found.
inline constexpr std::string_view obsoleteSetting = "language";

}  // namespace quorvi
