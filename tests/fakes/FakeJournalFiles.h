#pragma once

#include <map>
#include <string>
#include <system_error>

#include "Quorvi/platform/JournalFile.h"

namespace quorvi::test {

// Journals in memory, for one thread at a time. Outlives the journals.
class FakeJournalFiles : public JournalFiles {
public:
    std::unique_ptr<JournalFile> open(const std::filesystem::path& file) override {
        if (unavailable) fail(std::errc::read_only_file_system);
        return std::make_unique<Journal>(*this, files[file]);
    }

    std::map<std::filesystem::path, std::string> files;
    int appends = 0;

    // Faults.
    bool unavailable = false;
    bool full = false;  // half of what is appended fits

private:
    [[noreturn]] static void fail(std::errc code) {
        throw std::system_error(std::make_error_code(code));
    }

    class Journal final : public JournalFile {
    public:
        Journal(FakeJournalFiles& all, std::string& content) : all_(all), content_(content) {}
        std::string read() override { return content_; }
        void truncate(std::uint64_t size) override { content_.resize(size); }
        void append(std::string_view bytes) override {
            ++all_.appends;
            content_ += all_.full ? bytes.substr(0, bytes.size() / 2) : bytes;
            if (all_.full) fail(std::errc::no_space_on_device);
        }

    private:
        FakeJournalFiles& all_;
        std::string& content_;
    };
};

}  // namespace quorvi::test
