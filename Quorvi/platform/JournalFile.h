#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace quorvi {

// A file that is appended to until it is started anew. Each operation blocks until the disk has
// finished. One thread at a time.
class JournalFile {
public:
    virtual ~JournalFile() = default;

    // Returns the whole content. Throws std::system_error.
    virtual std::string read() = 0;
    // Cuts the file to this size, durably. Throws std::system_error.
    virtual void truncate(std::uint64_t size) = 0;
    // Appends the bytes; they are on the disk when it returns. Throws std::system_error, and the
    // file may then end with any part of them.
    virtual void append(std::string_view bytes) = 0;
};

class JournalFiles {
public:
    virtual ~JournalFiles() = default;

    // Opens the file for this process alone; creates it and its folder if missing (0600, 0700).
    // Throws std::system_error: std::errc::resource_unavailable_try_again while another process has
    // it open.
    virtual std::unique_ptr<JournalFile> open(const std::filesystem::path& file) = 0;
};

}  // namespace quorvi
