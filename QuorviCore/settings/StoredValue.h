#pragma once

#include <optional>

#include "QuorviCore/propertylist/PropertyList.h"
#include "QuorviCore/settings/SettingValue.h"

namespace quorvi {

// Returns the value as a setting; nullopt for a type that no setting has.
inline std::optional<SettingValue> settingValueOf(const PropertyList& stored) {
    // Built in place: g++ 12 takes a moved temporary variant for uninitialised under the
    // sanitizers.
    std::optional<SettingValue> setting;
    const auto take = [&setting](const auto& value) {
        if constexpr (requires { SettingValue(value); }) setting.emplace(value);
    };
    std::visit(take, stored.value);
    return setting;
}

}  // namespace quorvi
