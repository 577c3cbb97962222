#pragma once

#include <string>

namespace quorvi {

// Where a program lies that ships with this one and that only this one starts: beside it in a
// build, in a folder of their own where they are installed. Needs the application object.
std::string helperProgram(const std::string& name);

}  // namespace quorvi
