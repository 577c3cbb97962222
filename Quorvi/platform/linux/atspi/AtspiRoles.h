#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiProtocol.h"

namespace quorvi::atspi {

// What an object says of itself, and what follows from it for the attributes of the port. Pure.
struct Description {
    Role role = Role::invalid;
    States states;
    std::vector<std::string> interfaces;

    bool offers(std::string_view interface) const;
};

bool isWindow(Role role);

// A password field, by role: toolkits differ in the name and in what they let read of the content.
bool isSecure(Role role);

// Whether the user can type into it. Chromium marks every part of an editable region as editable;
// only the region itself takes the focus.
bool isEditableText(const Description& object);

// Whether it can be what the user means by the focused element. Windows and web pages as a whole
// carry the state besides the element inside them.
bool canHoldFocus(Role role, States states);

// Whether the focus may be somewhere below it: closed menus, which are most of an editor's objects,
// and what is not on the screen are not looked into.
bool mayContainFocus(Role role, States states);

// The value of "AXRole".
std::string_view accessibilityRole(const Description& object);

// Whether an embedded object of this role stands on lines of its own in the text around it.
bool isBlock(Role role);

}  // namespace quorvi::atspi
