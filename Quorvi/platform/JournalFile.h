#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace quorvi {

// A file that only grows at its end, until it is begun anew. Each operation blocks for the disk.
// For one thread at a time.
class JournalFile {
public:
    virtual ~JournalFile() = default;

    // The whole content. Throws std::system_error.
    virtual std::string read() = 0;
    // Cuts the file to this size, durably. Throws std::system_error.
    virtual void truncate(std::uint64_t size) = 0;
    // Adds the bytes at the end; they are on the disk when this returns. Throws std::system_error,
    // and any part of them may then be in the file.
    virtual void append(std::string_view bytes) = 0;
};

class JournalFiles {
public:
    virtual ~JournalFiles() = default;

    // Opens the file for this process alone, makes it and its folder when they are missing (0600,
    // 0700). Throws std::system_error, with std::errc::resource_unavailable_try_again while another
    // process has it open.
    virtual std::unique_ptr<JournalFile> open(const std::filesystem::path& file) = 0;
};

}  // namespace quorvi
