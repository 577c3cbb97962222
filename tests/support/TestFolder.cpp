#include "tests/support/TestFolder.h"

#include <stdlib.h>

#include <stdexcept>

namespace quorvi::test {

TestFolder::TestFolder(bool inMemory) {
    const std::filesystem::path memory = "/dev/shm";
    const auto parent = inMemory && std::filesystem::is_directory(memory)
                            ? memory
                            : std::filesystem::temp_directory_path();
    std::string pattern = parent / "quorvi-test-XXXXXX";
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for a test");
    path_ = pattern;
}

}  // namespace quorvi::test
