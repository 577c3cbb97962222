#include "Quorvi/ui/translations/ShownShortcut.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <array>
#include <utility>

#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

namespace {

struct ShownShortcut {
    Q_DECLARE_TR_FUNCTIONS(ShownShortcut)
};

bool rightAltIsAltGr = false;

// In the order in which Qt writes them.
constexpr std::array<std::pair<std::uint64_t, const char*>, 4> modifiers{{
    {modifierFlag::command, QT_TRANSLATE_NOOP("ShownShortcut", "Super")},
    {modifierFlag::control, QT_TRANSLATE_NOOP("ShownShortcut", "Ctrl")},
    {modifierFlag::option, QT_TRANSLATE_NOOP("ShownShortcut", "Alt")},
    {modifierFlag::shift, QT_TRANSLATE_NOOP("ShownShortcut", "Shift")},
}};

// The keys with a word on them that differs from language to language.
constexpr std::array<std::pair<KeyCode, const char*>, 16> namedKeys{{
    {36, QT_TRANSLATE_NOOP("ShownShortcut", "Enter")},
    {48, QT_TRANSLATE_NOOP("ShownShortcut", "Tab")},
    {keyCode::space, QT_TRANSLATE_NOOP("ShownShortcut", "Space")},
    {51, QT_TRANSLATE_NOOP("ShownShortcut", "Backspace")},
    {76, QT_TRANSLATE_NOOP("ShownShortcut", "Enter (keypad)")},
    {110, QT_TRANSLATE_NOOP("ShownShortcut", "Menu")},
    {114, QT_TRANSLATE_NOOP("ShownShortcut", "Insert")},
    {115, QT_TRANSLATE_NOOP("ShownShortcut", "Home")},
    {116, QT_TRANSLATE_NOOP("ShownShortcut", "Page Up")},
    {117, QT_TRANSLATE_NOOP("ShownShortcut", "Delete")},
    {119, QT_TRANSLATE_NOOP("ShownShortcut", "End")},
    {121, QT_TRANSLATE_NOOP("ShownShortcut", "Page Down")},
    {123, QT_TRANSLATE_NOOP("ShownShortcut", "Left")},
    {124, QT_TRANSLATE_NOOP("ShownShortcut", "Right")},
    {125, QT_TRANSLATE_NOOP("ShownShortcut", "Down")},
    {126, QT_TRANSLATE_NOOP("ShownShortcut", "Up")},
}};

// The label without the signs of the modifiers before it.
QString ownText(const Hotkey& shortcut) {
    auto text = QString::fromStdString(shortcut.label);
    qsizetype signs = 0;
    while (signs + 1 < text.size() && QStringLiteral("⌃⌥⇧⌘").contains(text[signs])) ++signs;
    return text.mid(signs);
}

QString keyName(const Hotkey& shortcut) {
    if (const auto name = functionKeyName(shortcut.keyCode))
        return QString::fromUtf8(name->data(), static_cast<qsizetype>(name->size()));
    const auto* named =
        std::ranges::find(namedKeys, shortcut.keyCode, &std::pair<KeyCode, const char*>::first);
    if (named != namedKeys.end()) return ShownShortcut::tr(named->second);
    const auto text = ownText(shortcut);
    const auto numbered = say::numberedKey(shortcut.keyCode);
    return text.toStdString() == numbered.english() ? shown(numbered) : text;
}

}  // namespace

QString shown(const Hotkey& shortcut) {
    if (const auto modifier = Hotkey::standaloneModifier(shortcut.keyCode)) {
        if (rightAltIsAltGr && modifier == Hotkey::rightOption)
            return ShownShortcut::tr("Right Alt (AltGr)");
        return shown(title(*modifier));
    }
    QStringList names;
    for (const auto& [flag, name] : modifiers)
        if (shortcut.modifiers & flag) names << ShownShortcut::tr(name);
    names << keyName(shortcut);
    return names.join(QLatin1Char('+'));
}

void setRightAltIsAltGr(bool isAltGr) {
    rightAltIsAltGr = isAltGr;
}

}  // namespace quorvi
