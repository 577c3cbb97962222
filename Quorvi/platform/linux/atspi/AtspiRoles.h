#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiProtocol.h"

namespace quorvi::atspi {

// An object's role, states and interfaces, and the port's attributes derived from them. Pure.
struct Description {
    Role role = Role::invalid;
    States states;
    std::vector<std::string> interfaces;

    bool offers(std::string_view interface) const;
};

bool isWindow(Role role);

// Whether it is a password field, by role: toolkits differ in the name and in how much of the
// content can be read.
bool isSecure(Role role);

// Whether the user can type into it. Chromium marks every part of an editable region as editable;
// only the region itself takes the focus.
bool isEditableText(const Description& object);

// Whether it can be the focused element. Windows and whole web pages have the focused state besides
// the element inside them.
bool canHoldFocus(Role role, States states);

// Whether the focus may be below it: not in closed menus, which are most of an editor's objects,
// nor in what is not on the screen.
bool mayContainFocus(Role role, States states);

// The value of "AXRole".
std::string_view accessibilityRole(const Description& object);

// Whether an embedded object of this role has lines of its own in the surrounding text.
bool isBlock(Role role);

}  // namespace quorvi::atspi
