#pragma once

#include <cstdint>
#include <string>

// Names and numbers of the AT-SPI protocol that the accessibility adapter uses.
namespace quorvi::atspi {

inline constexpr const char* accessibleInterface = "org.a11y.atspi.Accessible";
inline constexpr const char* applicationInterface = "org.a11y.atspi.Application";
inline constexpr const char* hypertextInterface = "org.a11y.atspi.Hypertext";
inline constexpr const char* editableTextInterface = "org.a11y.atspi.EditableText";
inline constexpr const char* textInterface = "org.a11y.atspi.Text";
inline constexpr const char* objectEventInterface = "org.a11y.atspi.Event.Object";
inline constexpr const char* windowEventInterface = "org.a11y.atspi.Event.Window";
inline constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
inline constexpr const char* registryName = "org.a11y.atspi.Registry";
inline constexpr const char* rootPath = "/org/a11y/atspi/accessible/root";

// An object of an application. Unique bus names are never reused; a path belongs to one object
// while that object lives.
struct ObjectRef {
    std::string bus;
    std::string path;

    bool operator==(const ObjectRef&) const = default;
    bool isNull() const { return path.empty() || path == "/org/a11y/atspi/null"; }
};

enum class Role : std::uint32_t {
    invalid = 0,
    alert = 2,
    checkMenuItem = 8,
    comboBox = 11,
    dialog = 16,
    fileChooser = 19,
    frame = 23,
    icon = 26,
    image = 27,
    label = 29,
    list = 31,
    listItem = 32,
    menu = 33,
    menuItem = 35,
    passwordText = 40,
    pushButton = 43,
    radioMenuItem = 45,
    scrollBar = 48,
    spinButton = 52,
    table = 55,
    tableCell = 56,
    terminal = 60,
    text = 61,
    toggleButton = 62,
    window = 69,
    paragraph = 73,
    application = 75,
    entry = 79,
    heading = 83,
    section = 85,
    form = 87,
    tableRow = 90,
    documentWeb = 95,
    blockQuote = 105,
    article = 109,
    staticText = 116,
    descriptionList = 121,
    descriptionTerm = 122,
    descriptionValue = 123,
    pushButtonMenu = 129,
};

enum class State : unsigned {
    active = 1,
    defunct = 6,
    editable = 7,
    focusable = 11,
    focused = 12,
    multiLine = 17,
    showing = 25,
    singleLine = 26,
    visible = 30,
    managesDescendants = 31,
    readOnly = 43,
};

struct States {
    std::uint64_t bits = 0;
    bool has(State state) const { return (bits >> static_cast<unsigned>(state) & 1) != 0; }
};

// Marks an embedded object in a text: U+FFFC in UTF-8.
inline constexpr const char* objectReplacement = "\xEF\xBF\xBC";

}  // namespace quorvi::atspi
