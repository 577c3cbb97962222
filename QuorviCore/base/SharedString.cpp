#include "QuorviCore/base/SharedString.h"

#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace quorvi {

SharedString::SharedString(std::string_view text) {
    if (text.empty()) return;
    if (text.size() > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("text of more than 4 GB");
    void* memory = ::operator new(sizeof(Block) + text.size());
    block_ = new (memory) Block{1, static_cast<std::uint32_t>(text.size())};
    std::memcpy(static_cast<void*>(block_ + 1), text.data(), text.size());
}

void SharedString::release() noexcept {
    if (!block_ || block_->owners.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    block_->~Block();
    ::operator delete(block_);
}

}  // namespace quorvi
