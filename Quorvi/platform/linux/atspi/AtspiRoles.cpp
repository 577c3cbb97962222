#include "Quorvi/platform/linux/atspi/AtspiRoles.h"

#include <algorithm>

namespace quorvi::atspi {

bool Description::offers(std::string_view interface) const {
    return std::find(interfaces.begin(), interfaces.end(), interface) != interfaces.end();
}

bool isWindow(Role role) {
    return role == Role::frame || role == Role::window || role == Role::dialog ||
           role == Role::alert || role == Role::fileChooser;
}

bool isSecure(Role role) {
    return role == Role::passwordText;
}

bool isEditableText(const Description& object) {
    const auto& states = object.states;
    // Qt says of a read-only field that it is editable and read-only.
    if (!states.has(State::editable) || states.has(State::readOnly)) return false;
    if (!object.offers(textInterface)) return false;
    return states.has(State::focusable) || states.has(State::focused);
}

bool canHoldFocus(Role role, States states) {
    if (!states.has(State::focused) || states.has(State::defunct)) return false;
    if (isWindow(role) || role == Role::application) return false;
    return role != Role::documentWeb || states.has(State::editable);
}

bool mayContainFocus(Role role, States states) {
    switch (role) {
        case Role::staticText:
        case Role::label:
        case Role::scrollBar:
            return false;
        case Role::menu:
        case Role::menuItem:
        case Role::checkMenuItem:
        case Role::radioMenuItem:
            return states.has(State::showing);
        default:
            // GTK 4 never says that anything is showing.
            return states.has(State::showing) || states.has(State::visible);
    }
}

std::string_view accessibilityRole(const Description& object) {
    const bool editable = isEditableText(object);
    switch (object.role) {
        case Role::comboBox:
            return editable ? "AXComboBox" : "AXGroup";
        case Role::passwordText:
            return "AXTextField";
        case Role::terminal:
            return object.offers(textInterface) ? "AXTextArea" : "AXGroup";
        case Role::text:
        case Role::entry:
        case Role::spinButton:
            if (editable) return object.states.has(State::multiLine) ? "AXTextArea" : "AXTextField";
            return object.role == Role::spinButton ? "AXGroup" : "AXStaticText";
        case Role::label:
        case Role::staticText:
            return "AXStaticText";
        case Role::pushButton:
        case Role::pushButtonMenu:
        case Role::toggleButton:
            return "AXButton";
        case Role::image:
        case Role::icon:
            return "AXImage";
        default:
            if (isWindow(object.role)) return "AXWindow";
            if (!editable) return "AXGroup";
            return object.states.has(State::singleLine) ? "AXTextField" : "AXTextArea";
    }
}

bool isBlock(Role role) {
    switch (role) {
        case Role::paragraph:
        case Role::section:
        case Role::heading:
        case Role::list:
        case Role::listItem:
        case Role::blockQuote:
        case Role::article:
        case Role::form:
        case Role::table:
        case Role::tableRow:
        case Role::tableCell:
        case Role::descriptionList:
        case Role::descriptionTerm:
        case Role::descriptionValue:
            return true;
        default:
            return false;
    }
}

}  // namespace quorvi::atspi
