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
// thread. For values that are held by the hundred thousand. Compares bytes.
class SharedString {
public:
    SharedString() = default;
    // Throws std::length_error above 4 GB.
    SharedString(std::string_view text);
    SharedString(const std::string& text) : SharedString(std::string_view(text)) {}
    SharedString(const char* text) : SharedString(std::string_view(text)) {}

    SharedString(const SharedString& other) noexcept : block_(other.block_) { retain(); }
    SharedString(SharedString&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    SharedString& operator=(SharedString other) noexcept {
        std::swap(block_, other.block_);
        return *this;
    }
    ~SharedString() { release(); }

    std::string_view view() const noexcept {
        if (!block_) return {};
        return {reinterpret_cast<const char*>(block_ + 1), block_->size};
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
    // The bytes follow it.
    struct Block {
        std::atomic<std::uint32_t> owners;
        std::uint32_t size;
    };

    void retain() const noexcept {
        if (block_) block_->owners.fetch_add(1, std::memory_order_relaxed);
    }
    void release() noexcept;

    Block* block_ = nullptr;  // nullptr for the empty text
};

}  // namespace quorvi

template <>
struct std::hash<quorvi::SharedString> {
    std::size_t operator()(const quorvi::SharedString& s) const noexcept {
        return std::hash<std::string_view>()(s.view());
    }
};
