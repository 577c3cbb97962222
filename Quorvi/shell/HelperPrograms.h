#pragma once

#include <string>

namespace quorvi {

// The path of a helper program: beside this program in a build, in its own folder when installed.
// Needs the application object.
std::string helperProgram(const std::string& name);

// The path of a program that users can also run: beside this one, in a build as well as installed.
std::string programBeside(const std::string& name);

}  // namespace quorvi
