#pragma once

#include <map>
#include <string>
#include <system_error>

#include "Quorvi/platform/FileStore.h"

namespace quorvi::test {

// Files in memory, for one thread at a time.
class FakeFileStore : public FileStore {
public:
    std::optional<std::string> read(const std::filesystem::path& file) override {
        if (unreadable) fail(std::errc::permission_denied);
        const auto found = files.find(file);
        if (found == files.end()) return std::nullopt;
        return found->second;
    }
    void replace(const std::filesystem::path& file, std::span<const std::string_view> parts,
                 const std::filesystem::path& previous = {}) override {
        ++attempts;
        if (full) fail(std::errc::no_space_on_device);
        std::string content;
        for (const auto part : parts) content += part;
        const auto old = files.find(file);
        if (!previous.empty() && old != files.end())
            files[file.parent_path() / previous.filename()] = old->second;
        files[file] = std::move(content);
    }

    std::map<std::filesystem::path, std::string> files;
    int attempts = 0;  // to replace a file

    // Faults.
    bool unreadable = false;
    bool full = false;

private:
    [[noreturn]] static void fail(std::errc code) {
        throw std::system_error(std::make_error_code(code));
    }
};

}  // namespace quorvi::test
