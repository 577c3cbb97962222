#include "QuorviCore/base/SharedString.h"

#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

#include "QuorviCore/base/ColdMemory.h"

namespace quorvi {

SharedString::SharedString(std::string_view text) {
    if (text.empty()) return;
    if (text.size() > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("text of more than 4 GB");
    void* memory = ::operator new(sizeof(Block) + text.size());
    auto* block = new (memory) Block{1, static_cast<std::uint32_t>(text.size())};
    std::memcpy(static_cast<void*>(block + 1), text.data(), text.size());
    block_ = reinterpret_cast<std::uintptr_t>(block);
}

void SharedString::retainCold() const noexcept {
    ColdMemory::retain(address());
}

void SharedString::release() noexcept {
    if (!block_) return;
    auto* block = address();
    if (isCold()) return ColdMemory::release(block);
    if (block->owners.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    block->~Block();
    ::operator delete(block);
}

}  // namespace quorvi
