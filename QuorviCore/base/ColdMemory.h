#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "QuorviCore/base/SharedString.h"

namespace quorvi {

// Memory for byte strings that are held by the hundred thousand and rarely read, such as the
// transcripts of years: segments of a file, whose pages come back when they are read. Part of the
// process, like the heap: never destroyed, usable on any thread. Until use() is called, and for
// what does not fit, there is the heap.
class ColdMemory {
public:
    static constexpr std::size_t segmentSize = 256 << 10;
    static constexpr std::size_t segments = 16 << 10;  // none is used twice

    // Address space for all segments, one after the other. Thread-safe for different segments.
    class Pages {
    public:
        virtual ~Pages() = default;
        virtual char* begin() const = 0;
        // Makes a new segment writable. Returns false if there is no memory for it.
        virtual bool open(std::size_t segment) = 0;
        // The segment is only read from now on, and is to be moved out.
        virtual void complete(std::size_t segment) = 0;
        // Nobody needs the content any more.
        virtual void discard(std::size_t segment) = 0;
        // Moves complete segments to the file, and takes pages that were read, and free pages of
        // the heap, out of the process's memory.
        virtual void giveBack() = 0;
    };
    // To be called once, before strings are kept. The pages must never be destroyed.
    static void use(Pages& pages);

    // To be called after work that has made, read or freed very much. Blocks; may write to the
    // disk.
    static void giveBack();

private:
    friend class SharedString;
    friend class ColdStrings;

    static void retain(const void* string) noexcept;
    static void release(const void* string) noexcept;
    static void releaseSegment(std::size_t segment) noexcept;
};

// Puts strings into the cold memory, neighbours next to each other. The last segment stays in the
// process's memory until it is full. One thread at a time.
class ColdStrings {
public:
    ColdStrings() = default;
    ~ColdStrings() { close(); }
    ColdStrings(const ColdStrings&) = delete;
    ColdStrings& operator=(const ColdStrings&) = delete;

    SharedString keep(std::string_view text);

private:
    bool openNext();
    void close();

    char* next_ = nullptr;  // where the next string goes; nullptr without a segment
    char* end_ = nullptr;
    std::size_t segment_ = 0;
};

}  // namespace quorvi
