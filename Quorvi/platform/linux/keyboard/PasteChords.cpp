#include "Quorvi/platform/linux/keyboard/PasteChords.h"

#include <algorithm>
#include <array>
#include <optional>
#include <sstream>
#include <utility>

#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi {
namespace {

using enum PasteChord;

// In a terminal Control-V belongs to the program that runs inside.
constexpr PasteChords::Choice terminal{controlShiftV, controlShiftV};
// The terminals on GNOME's widget find no V under a lone Greek or Cyrillic layout, but have a
// second combination, which is not to be used elsewhere: some paste the selection with it. Their
// paste command is off until they know that a new clipboard has text.
constexpr PasteChords::Choice vte{controlShiftV, controlShiftInsert, true, true};
// Nothing pastes the clipboard here as delivered: Shift-Insert pastes the selection, which is other
// text and might be run as a command, and Control-V waits for a key to quote.
constexpr PasteChords::Choice nothing{none, none};

struct Row {
    std::string_view program;
    PasteChords::Choice choice;
};

constexpr Row table[] = {
    {"alacritty", terminal},
    {"cool-retro-term", terminal},
    {"deepin-terminal", vte},
    {"emacs", {shiftInsert, shiftInsert}},
    {"foot", terminal},
    {"ghostty", terminal},
    {"gnome-terminal", vte},
    {"guake", vte},
    {"gvim", nothing},
    {"kgx", vte},
    {"kitty", {controlShiftV, none, false}},
    {"konsole", terminal},
    {"lxterminal", vte},
    {"mate-terminal", vte},
    {"org.gnome.console", vte},
    {"org.gnome.ptyxis", vte},
    {"org.wezfurlong.wezterm", terminal},
    {"ptyxis", vte},
    {"qterminal", terminal},
    {"rxvt-unicode", {controlAltV, controlAltV}},
    {"sakura", vte},
    {"st", terminal},
    {"st-256color", terminal},
    {"terminator", vte},
    {"terminology", terminal},
    {"termite", vte},
    {"tilda", vte},
    {"tilix", vte},
    {"urxvt", {controlAltV, controlAltV}},
    {"uxterm", nothing},
    {"wezterm", terminal},
    {"wezterm-gui", terminal},
    {"x-terminal-emulator", terminal},
    {"xfce4-terminal", vte},
    {"xterm", nothing},
    {"yakuake", terminal},
};

constexpr std::array<std::pair<std::string_view, PasteChord>, 6> chordNames{
    {{"none", none},
     {"control-v", controlV},
     {"control-shift-v", controlShiftV},
     {"control-alt-v", controlAltV},
     {"shift-insert", shiftInsert},
     {"control-shift-insert", controlShiftInsert}}};

std::optional<PasteChord> chordNamed(std::string_view name) {
    for (const auto& [known, chord] : chordNames)
        if (known == name) return chord;
    return std::nullopt;
}

std::string lowered(std::string_view name) {
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(), text::asciiLower);
    return lower;
}

}  // namespace

PasteChords::PasteChords(std::string_view users) {
    std::istringstream lines{std::string(users)};
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line.substr(0, line.find('#')));
        std::string program, name;
        words >> program >> name;
        if (const auto chord = chordNamed(lowered(name)))
            users_.push_back({lowered(program), *chord});
    }
}

PasteChords::Choice PasteChords::of(std::string_view instance, std::string_view className) const {
    const std::array names{lowered(instance), lowered(className)};
    const auto isNamed = [&](std::string_view program) {
        return std::ranges::find(names, program) != names.end();
    };
    Choice choice;
    for (const auto& row : table)
        if (isNamed(row.program)) {
            choice = row.choice;
            break;
        }
    for (const auto& line : users_)
        if (isNamed(line.program)) return {line.chord, line.chord, true, choice.looksFirst};
    return choice;
}

}  // namespace quorvi
