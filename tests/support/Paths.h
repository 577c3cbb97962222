#pragma once

#include <string>

namespace quorvi::test {

// The project's folder.
std::string sourceFolder();

// The path of a program of this build, which is beside the running one.
std::string builtProgram(const std::string& name);

}  // namespace quorvi::test
