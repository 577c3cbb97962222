#include "Quorvi/platform/linux/shortcuts/KeyNames.h"

#include <algorithm>
#include <iterator>

#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {
namespace {

struct Named {
    XKeycode position;
    const char* name;
};

constexpr Named everywhere[] = {
    {9, "Escape"}, {22, "BackSpace"},  {23, "Tab"},         {36, "Return"},  {65, "space"},
    {67, "F1"},    {68, "F2"},         {69, "F3"},          {70, "F4"},      {71, "F5"},
    {72, "F6"},    {73, "F7"},         {74, "F8"},          {75, "F9"},      {76, "F10"},
    {95, "F11"},   {96, "F12"},        {78, "Scroll_Lock"}, {107, "Print"},  {110, "Home"},
    {111, "Up"},   {112, "Page_Up"},   {113, "Left"},       {114, "Right"},  {115, "End"},
    {116, "Down"}, {117, "Page_Down"}, {118, "Insert"},     {119, "Delete"}, {127, "Pause"},
    {135, "Menu"},
};

constexpr Named inMostLayouts[] = {
    {10, "1"},         {11, "2"},         {12, "3"},           {13, "4"},
    {14, "5"},         {15, "6"},         {16, "7"},           {17, "8"},
    {18, "9"},         {19, "0"},         {20, "minus"},       {21, "equal"},
    {24, "q"},         {25, "w"},         {26, "e"},           {27, "r"},
    {28, "t"},         {29, "y"},         {30, "u"},           {31, "i"},
    {32, "o"},         {33, "p"},         {34, "bracketleft"}, {35, "bracketright"},
    {38, "a"},         {39, "s"},         {40, "d"},           {41, "f"},
    {42, "g"},         {43, "h"},         {44, "j"},           {45, "k"},
    {46, "l"},         {47, "semicolon"}, {48, "apostrophe"},  {49, "grave"},
    {51, "backslash"}, {52, "z"},         {53, "x"},           {54, "c"},
    {55, "v"},         {56, "b"},         {57, "n"},           {58, "m"},
    {59, "comma"},     {60, "period"},    {61, "slash"},
};

template <class Names>
const char* find(const Names& names, XKeycode position) {
    const auto* found = std::ranges::find(names, position, &Named::position);
    return found == std::end(names) ? nullptr : found->name;
}

}  // namespace

std::string symbolName(KeyCode keyCode) {
    const auto position = positionOfKeyCode(keyCode);
    if (const char* name = find(everywhere, position)) return name;
    const char* name = find(inMostLayouts, position);
    return name ? name : "";
}

bool isSameInAllLayouts(KeyCode keyCode) {
    return find(everywhere, positionOfKeyCode(keyCode)) != nullptr;
}

}  // namespace quorvi
