#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace quorvi::test {

// A new folder of the session's, gone with its owner.
class TestFolder {
public:
    // In memory where that is said, for what writes a lot and is not about the disk.
    explicit TestFolder(bool inMemory = false);
    ~TestFolder() {
        std::error_code ignored;  // a dying program may still write there
        std::filesystem::remove_all(path_, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    // The path of a new file.
    std::string write(const std::string& name, std::string_view content) const {
        std::ofstream(path_ / name, std::ios::binary) << content;
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};

// The whole file, empty when there is none.
inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace quorvi::test
