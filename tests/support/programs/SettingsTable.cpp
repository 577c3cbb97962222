#include <cstdio>
#include <string>

#include "QuorviCore/settings/Setting.h"

// Prints the list of settings as the table of docs/user/settings.md.
namespace {

using namespace quorvi;

std::string shown(const SettingValue& value) {
    if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "true" : "false";
    if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
    const auto* text = std::get_if<std::string>(&value);
    const auto words = text ? *text : std::string(textOf(std::get<Bytes>(value)));
    return words.empty() ? "–" : "`" + words + "`";
}

}  // namespace

int main() {
    std::puts("| Key | Meaning | Default | Travels | Exported |\n|---|---|---|---|---|");
    for (const auto* each : allSettings) {
        const bool isState = each->scope() == SettingScope::state;
        const auto* everywhere = each->scope() == SettingScope::user ? "yes" : "no";
        std::printf("| `%s` | %s%s | %s | %s | %s |\n", std::string(each->key()).c_str(),
                    isState ? "State: " : "", std::string(each->meaning()).c_str(),
                    shown(each->defaultValue()).c_str(), everywhere, everywhere);
    }
}
