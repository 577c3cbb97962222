#include "QuorviCore/base/ColdMemory.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <new>

namespace quorvi {

namespace {

ColdMemory::Pages* pages = nullptr;
char* first = nullptr;  // the begin of the pages
// How many strings of each segment are held, and whether it is being filled.
std::array<std::atomic<std::uint32_t>, ColdMemory::segments> owners;
std::atomic<std::size_t> opened = 0;  // segments

std::size_t segmentOf(const void* string) {
    const auto offset = static_cast<const char*>(string) - first;
    return static_cast<std::size_t>(offset) / ColdMemory::segmentSize;
}

}  // namespace

void ColdMemory::use(Pages& all) {
    pages = &all;
    first = all.begin();
}

void ColdMemory::giveBack() {
    if (pages) pages->giveBack();
}

void ColdMemory::retain(const void* string) noexcept {
    owners[segmentOf(string)].fetch_add(1, std::memory_order_relaxed);
}

void ColdMemory::release(const void* string) noexcept {
    releaseSegment(segmentOf(string));
}

void ColdMemory::releaseSegment(std::size_t segment) noexcept {
    if (owners[segment].fetch_sub(1, std::memory_order_acq_rel) == 1) pages->discard(segment);
}

SharedString ColdStrings::keep(std::string_view text) {
    using Block = SharedString::Block;
    constexpr std::size_t alignment = alignof(Block);
    const auto size = (sizeof(Block) + text.size() + alignment - 1) / alignment * alignment;
    if (text.empty() || size > ColdMemory::segmentSize / 2) return text;
    if (size > static_cast<std::size_t>(end_ - next_) && !openNext()) return text;
    auto* block = new (next_) Block{0, static_cast<std::uint32_t>(text.size())};
    std::memcpy(next_ + sizeof(Block), text.data(), text.size());
    next_ += size;
    return SharedString(SharedString::Cold{block});
}

bool ColdStrings::openNext() {
    close();
    if (!pages || opened >= ColdMemory::segments) return false;
    segment_ = opened.fetch_add(1);
    if (segment_ >= ColdMemory::segments || !pages->open(segment_)) return false;
    owners[segment_].fetch_add(1, std::memory_order_relaxed);
    next_ = first + segment_ * ColdMemory::segmentSize;
    end_ = next_ + ColdMemory::segmentSize;
    return true;
}

// A segment that is nearly empty is not worth its place in the file.
void ColdStrings::close() {
    if (!next_) return;
    const auto left = static_cast<std::size_t>(end_ - next_);
    if (left < ColdMemory::segmentSize / 2) pages->complete(segment_);
    next_ = end_ = nullptr;
    ColdMemory::releaseSegment(segment_);
}

}  // namespace quorvi
