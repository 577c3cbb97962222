#include "Quorvi/platform/linux/posix/ColdFile.h"

#include <fcntl.h>
#include <malloc.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>
#include <utility>

namespace quorvi {

namespace {

constexpr auto segmentSize = ColdMemory::segmentSize;

// So many segments stay in the process's memory if there are no more: 4 MB.
constexpr std::ptrdiff_t few = 16;

off_t placeOf(std::size_t segment) {
    return static_cast<off_t>(segment * segmentSize);
}

char* reserve() {
    void* space = ::mmap(nullptr, ColdMemory::segments * segmentSize, PROT_NONE,
                         MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return space == MAP_FAILED ? nullptr : static_cast<char*>(space);
}

int unnamedFile(const std::filesystem::path& folder) {
    const int file = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (file >= 0) return file;
    auto name = (folder / ".cold-XXXXXX").string();
    const int named = ::mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0) ::unlink(name.c_str());
    return named;
}

}  // namespace

ColdFile::ColdFile(std::filesystem::path folder) : folder_(std::move(folder)), begin_(reserve()) {}

bool ColdFile::open(std::size_t segment) {
    return begin_ && ::mprotect(addressOf(segment), segmentSize, PROT_READ | PROT_WRITE) == 0;
}

void ColdFile::complete(std::size_t segment) {
    states_[segment] = State::complete;
}

void ColdFile::discard(std::size_t segment) {
    if (states_[segment].exchange(State::gone) == State::inFile)
        punch(segment);
    else
        ::madvise(addressOf(segment), segmentSize, MADV_DONTNEED);
}

void ColdFile::punch(std::size_t segment) {
    ::fallocate(file_, FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, placeOf(segment),
                static_cast<off_t>(segmentSize));
}

// Returns whether the segment is in the file. Others may be reading it, and discard it.
bool ColdFile::moveOut(std::size_t segment) {
    char* const address = addressOf(segment);
    for (std::size_t done = 0; done < segmentSize;) {
        const auto written = ::pwrite(file_, address + done, segmentSize - done,
                                      placeOf(segment) + static_cast<off_t>(done));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        done += static_cast<std::size_t>(written);
    }
    // Readers find either the old pages or the same content in those of the file.
    if (::mmap(address, segmentSize, PROT_READ, MAP_SHARED | MAP_FIXED, file_, placeOf(segment)) ==
        MAP_FAILED)
        return false;
    auto before = State::complete;
    if (!states_[segment].compare_exchange_strong(before, State::inFile)) punch(segment);
    return true;
}

bool ColdFile::isWorthAFile() const {
    const auto count = [this](State state) {
        return std::ranges::count_if(states_, [state](const auto& one) { return one == state; });
    };
    return count(State::inFile) > 0 || count(State::complete) > few;
}

void ColdFile::giveBack() {
    const std::lock_guard lock(givingBack_);
    const bool isToMoveOut = isWorthAFile();
    for (std::size_t segment = 0; segment < states_.size(); ++segment) {
        const auto state = states_[segment].load();
        if (state == State::complete && isToMoveOut) {
            if (file_ < 0) file_ = unnamedFile(folder_);
            if (!moveOut(segment)) break;
        } else if (state == State::inFile) {
            // Only pages of the file: the others have their content nowhere else.
            ::madvise(addressOf(segment), segmentSize, MADV_DONTNEED);
        }
    }
    ::malloc_trim(0);
}

}  // namespace quorvi
