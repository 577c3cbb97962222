#include "Quorvi/platform/linux/wayland/sway/SwayConfig.h"

#include <wordexp.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <utility>

#include "Quorvi/platform/linux/wayland/sway/SwaySocket.h"
#include "Quorvi/platform/linux/xkb/KeyMap.h"
#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi {
namespace {

constexpr std::size_t mostIncludes = 50;

std::string lowered(std::string_view name) {
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(), text::asciiLower);
    return lower;
}

// Names of the keys that may be a shortcut, in lower case; several for one key.
const std::multimap<KeyCode, std::string>& keyNames() {
    static const auto names = [] {
        std::multimap<KeyCode, std::string> all{
            {keyCode::escape, "escape"},         {keyCode::space, "space"},
            {keyCode::rightOption, "alt_r"},     {keyCode::rightOption, "iso_level3_shift"},
            {keyCode::leftControl, "control_l"}, {keyCode::rightControl, "control_r"},
            {keyCodeOfPosition(127), "pause"},   {keyCodeOfPosition(107), "print"},
            {keyCodeOfPosition(23), "tab"},      {keyCodeOfPosition(36), "return"}};
        for (KeyCode code = 0; code < 128; ++code)
            if (const auto name = functionKeyName(code)) all.emplace(code, lowered(*name));
        constexpr std::pair<XKeycode, std::string_view> rows[] = {
            {10, "1234567890"}, {24, "qwertyuiop"}, {38, "asdfghjkl"}, {52, "zxcvbnm"}};
        for (const auto& [first, row] : rows)
            for (std::size_t i = 0; i < row.size(); ++i)
                all.emplace(keyCodeOfPosition(static_cast<XKeycode>(first + i)), row.substr(i, 1));
        return all;
    }();
    return names;
}

std::uint64_t modifierNamed(const std::string& name) {
    if (name == "shift") return modifierFlag::shift;
    if (name == "ctrl" || name == "control") return modifierFlag::control;
    if (name == "mod1" || name == "alt") return modifierFlag::option;
    if (name == "mod4" || name == "super") return modifierFlag::command;
    return 0;
}

}  // namespace

SwayConfig::SwayConfig(std::string_view text) {
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        std::istringstream stream(line);
        std::vector<std::string> words(std::istream_iterator<std::string>(stream), {});
        if (words.empty() || words.front().starts_with('#')) continue;
        for (auto& word : words)
            for (const auto& [name, value] : variables_)
                for (auto at = word.find(name); at != word.npos && words.front() != "set";
                     at = word.find(name, at + value.size()))
                    word.replace(at, name.size(), value);
        readLine(words);
    }
}

void SwayConfig::readLine(const std::vector<std::string>& words) {
    const auto& first = words.front();
    const bool isBinding = first == "bindsym" || first == "bindcode";
    if (first == "}" && !blocks_.empty()) {
        blocks_.pop_back();
    } else if (words.back() == "{") {
        blocks_.push_back(first);
    } else if (first == "set" && words.size() > 2) {
        variables_.emplace_back(words[1], words[2]);
    } else if (first == "include" && words.size() > 1) {
        includes_.push_back(words[1]);
    } else if (std::ranges::find(blocks_, "mode") != blocks_.end()) {
        return;
    } else if (isBinding) {
        addBinding(std::span(words).subspan(1));
    } else if (!blocks_.empty() && blocks_.back().starts_with("bind")) {
        addBinding(words);
    }
}

void SwayConfig::addBinding(std::span<const std::string> words) {
    Binding binding;
    for (; !words.empty() && words.front().starts_with("--"); words = words.subspan(1))
        binding.isRelease |= words.front() == "--release";
    if (words.empty()) return;
    std::istringstream parts(lowered(words.front()));
    for (std::string part; std::getline(parts, part, '+');)
        if (const auto modifier = modifierNamed(part))
            binding.modifiers |= modifier;
        else
            binding.key = part;
    bindings_.push_back(std::move(binding));
}

bool SwayConfig::binds(const SwallowedKey& key) const {
    const auto [first, last] = keyNames().equal_range(key.keyCode);
    const auto code = std::to_string(positionOfKeyCode(key.keyCode));
    return std::ranges::any_of(bindings_, [&, first = first, last = last](const Binding& binding) {
        return binding.modifiers == key.modifiers &&
               (binding.key == code || std::any_of(first, last, [&](const auto& name) {
                    return binding.key == name.second;
                }));
    });
}

bool isBoundInSway(const SwallowedKey& key) {
    const auto answer = SwaySocket().ask(SwaySocket::Message::config);
    rapidjson::Document document;
    if (!answer || !json::parse(document, *answer) || !document.IsObject()) return false;
    const auto text = document.FindMember("config");
    if (text == document.MemberEnd() || !text->value.IsString()) return false;
    const SwayConfig config(text->value.GetString());
    if (config.binds(key)) return true;
    std::size_t read = 0;
    for (const auto& include : config.includes()) {
        wordexp_t paths{};
        if (wordexp(include.c_str(), &paths, WRDE_NOCMD) != 0) continue;
        bool isBound = false;
        for (std::size_t i = 0; i < paths.we_wordc && read < mostIncludes; ++i, ++read) {
            std::ifstream file(paths.we_wordv[i]);
            const std::string content(std::istreambuf_iterator<char>(file), {});
            isBound |= SwayConfig(content).binds(key);
        }
        wordfree(&paths);
        if (isBound) return true;
    }
    return false;
}

}  // namespace quorvi
