#include "Quorvi/platform/linux/ClipboardHandover.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>

#include "QuorviCore/transcription/QuorviError.h"

extern char** environ;

namespace quorvi {

namespace {

void appendNumber(Bytes& bytes, std::uint64_t number) {
    for (int shift = 0; shift < 64; shift += 8)
        bytes.push_back(static_cast<std::uint8_t>(number >> shift));
}

template <class Range>
void appendBlock(Bytes& bytes, const Range& block) {
    appendNumber(bytes, block.size());
    bytes.insert(bytes.end(), block.begin(), block.end());
}

// Takes the parts of a block in order and refuses to read past its end.
class Reader {
public:
    explicit Reader(const Bytes& bytes) : bytes_(bytes) {}

    std::uint64_t number() {
        need(8);
        std::uint64_t number = 0;
        for (int i = 0; i < 8; ++i) number |= std::uint64_t{bytes_[at_++]} << (8 * i);
        return number;
    }
    template <class T>
    T block() {
        const auto size = number();
        need(size);
        const auto begin = bytes_.begin() + static_cast<std::ptrdiff_t>(at_);
        at_ += size;
        return T(begin, begin + static_cast<std::ptrdiff_t>(size));
    }
    bool atEnd() const { return at_ == bytes_.size(); }

private:
    void need(std::uint64_t size) const {
        if (bytes_.size() - at_ < size)
            throw QuorviError::message("The clipboard that was handed over is incomplete.");
    }

    const Bytes& bytes_;
    std::size_t at_ = 0;
};

// A file of memory only, positioned at its beginning; -1 when there is none to be had.
int memoryFile(const Bytes& content) {
    const int file = memfd_create("clipboard", MFD_CLOEXEC);
    if (file < 0) return -1;
    for (std::size_t written = 0; written < content.size();) {
        const auto n = write(file, content.data() + written, content.size() - written);
        if (n <= 0) {
            close(file);
            return -1;
        }
        written += static_cast<std::size_t>(n);
    }
    lseek(file, 0, SEEK_SET);
    return file;
}

}  // namespace

Bytes encodeClipboard(const std::vector<PasteboardItem>& items) {
    Bytes bytes;
    for (const auto& item : items)
        for (const auto& one : item.representations) {
            appendBlock(bytes, one.type);
            appendBlock(bytes, one.encoding);
            appendNumber(bytes, static_cast<std::uint64_t>(one.format));
            appendBlock(bytes, *one.data);
        }
    return bytes;
}

std::vector<PasteboardItem> decodeClipboard(const Bytes& bytes) {
    PasteboardItem item;
    for (Reader reader(bytes); !reader.atEnd();) {
        PasteboardRepresentation one;
        one.type = reader.block<std::string>();
        one.encoding = reader.block<std::string>();
        one.format = static_cast<int>(reader.number());
        one.data = std::make_shared<const Bytes>(reader.block<Bytes>());
        if (one.format != 8 && one.format != 16 && one.format != 32)
            throw QuorviError::message("The clipboard that was handed over is damaged.");
        item.representations.push_back(std::move(one));
    }
    if (item.representations.empty()) return {};
    return {std::move(item)};
}

bool startClipboardKeeper(const std::string& program, const std::vector<PasteboardItem>& items) {
    const int content = memoryFile(encodeClipboard(items));
    if (content < 0) return false;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, content, STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    std::string name = program;
    char* arguments[] = {name.data(), nullptr};
    pid_t keeper = 0;
    const int failed =
        posix_spawn(&keeper, program.c_str(), &actions, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    close(content);
    return failed == 0;
}

}  // namespace quorvi
