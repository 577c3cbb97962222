#pragma once

#include <atomic>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace quorvi {

// An immutable byte string with shared ownership: as large as a pointer and cheap to copy, on any
// thread. For values that are held by the hundred thousand. Compares bytes. Its bytes are in the
// heap, or in the cold memory if ColdStrings has put them there.
class SharedString {
public:
    SharedString() = default;
    // Throws std::length_error above 4 GB.
    SharedString(std::string_view text);
    SharedString(const std::string& text) : SharedString(std::string_view(text)) {}
    SharedString(const char* text) : SharedString(std::string_view(text)) {}

    SharedString(const SharedString& other) noexcept : block_(other.block_) { retain(); }
    SharedString(SharedString&& other) noexcept : block_(std::exchange(other.block_, 0)) {}
    SharedString& operator=(SharedString other) noexcept {
        std::swap(block_, other.block_);
        return *this;
    }
    ~SharedString() { release(); }

    std::string_view view() const noexcept {
        if (!block_) return {};
        const auto* block = address();
        return {reinterpret_cast<const char*>(block + 1), block->size};
    }
    operator std::string_view() const noexcept { return view(); }
    std::string string() const { return std::string(view()); }
    bool empty() const noexcept { return !block_; }
    std::size_t size() const noexcept { return view().size(); }

    // Whether both share one block; cheaper than comparing.
    bool isSharedWith(const SharedString& other) const noexcept { return block_ == other.block_; }

    friend bool operator==(const SharedString& a, const SharedString& b) noexcept {
        return a.block_ == b.block_ || a.view() == b.view();
    }
    template <class Text>
        requires(std::convertible_to<const Text&, std::string_view> &&
                 !std::same_as<Text, SharedString>)
    friend bool operator==(const SharedString& a, const Text& b) noexcept {
        return a.view() == std::string_view(b);
    }
    friend std::strong_ordering operator<=>(const SharedString& a, const SharedString& b) noexcept {
        return a.view() <=> b.view();
    }

private:
    friend class ColdStrings;

    // The bytes follow it.
    struct Block {
        std::atomic<std::uint32_t> owners;  // 0 in the cold memory, which counts them elsewhere
        std::uint32_t size;
    };
    struct Cold {
        Block* block;
    };
    explicit SharedString(Cold cold) noexcept
        : block_(reinterpret_cast<std::uintptr_t>(cold.block) | coldBit) {
        retain();
    }

    bool isCold() const noexcept { return block_ & coldBit; }
    Block* address() const noexcept { return reinterpret_cast<Block*>(block_ & ~coldBit); }
    void retain() const noexcept {
        if (!block_) return;
        if (isCold())
            retainCold();
        else
            address()->owners.fetch_add(1, std::memory_order_relaxed);
    }
    void retainCold() const noexcept;
    void release() noexcept;

    static constexpr std::uintptr_t coldBit = 1;
    std::uintptr_t block_ = 0;  // address, with the bit if it is cold; 0 for the empty text
};

}  // namespace quorvi

template <>
struct std::hash<quorvi::SharedString> {
    std::size_t operator()(const quorvi::SharedString& s) const noexcept {
        return std::hash<std::string_view>()(s.view());
    }
};
