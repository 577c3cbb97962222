#include "tests/support/Paths.h"

#include <filesystem>

namespace quorvi::test {

std::string sourceFolder() {
    return QUORVI_SOURCE;
}

std::string builtProgram(const std::string& name) {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}

}  // namespace quorvi::test
