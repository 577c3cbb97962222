#include "Quorvi/platform/linux/posix/LockedRecording.h"

#include <sys/mman.h>

#include <cstring>

namespace quorvi {

std::unique_ptr<LockedRecording> LockedRecording::of(const Bytes& audio) {
    if (audio.empty()) return nullptr;
    void* pages =
        ::mmap(nullptr, audio.size(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) return nullptr;
    ::madvise(pages, audio.size(), MADV_DONTDUMP);
    ::mlock(pages, audio.size());  // refused beyond the limit
    std::memcpy(pages, audio.data(), audio.size());
    return std::unique_ptr<LockedRecording>(
        new LockedRecording(static_cast<std::uint8_t*>(pages), audio.size()));
}

LockedRecording::~LockedRecording() {
    ::explicit_bzero(pages_, size_);
    ::munmap(pages_, size_);
}

}  // namespace quorvi
