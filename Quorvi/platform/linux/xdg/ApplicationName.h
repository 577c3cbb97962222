#pragma once

#include <string>

namespace quorvi {

// The name under which menus offer the installed application that has windows of this class, such
// as "Text Editor" for "gnome-text-editor". `instance` is the first part of an X11 window class.
// Empty if no application matches. Reads the installed desktop entries, which may take a while; any
// thread.
std::string installedApplicationName(const std::string& instance, const std::string& className);

// The name of an office suite whose windows have a class for each kind of document, and which is
// one program to its user; empty for any other class.
std::string suiteName(const std::string& className);

}  // namespace quorvi
