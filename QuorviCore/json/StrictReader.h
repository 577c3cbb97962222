#pragma once

#include <rapidjson/reader.h>

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "QuorviCore/base/Nesting.h"
#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/text/Text.h"

// A strict reader of JSON documents that a table describes, made for large documents: it parses in
// place, builds no tree, and gives each value to the function that the table names. A fault
// anywhere makes the whole document unreadable: malformed JSON or UTF-8, a lone surrogate, a member
// of another type, a required member that is missing. Unknown members are skipped. If a member is
// there twice, each value must be valid and the last one counts.
//
// For .cpp files only: the parser is a detail of theirs.
namespace quorvi::json {

enum Type : unsigned { null = 1, boolean = 2, number = 4, text = 8, object = 16, list = 32 };

// A value that is neither an object nor a list.
struct Scalar {
    Type type = null;
    std::string_view text;  // of a text; of a number its digits. Valid as long as the document
    bool isTrue = false;
};

template <class Reader>
struct Shape;

// A member of an object, or every value of a list or map.
template <class Reader>
struct Member {
    std::string_view name;
    unsigned types = 0;  // allowed types; if null is one of them, the member may be missing
    // Takes a scalar; returns false if it is invalid. Null means absent.
    bool (*take)(Reader&, const Scalar&) = nullptr;
    const Shape<Reader>* shape = nullptr;  // of its object or list
};

template <class Reader>
constexpr unsigned bitsOfRequired(std::span<const Member<Reader>> members) {
    unsigned bits = 0;
    for (std::size_t i = 0; i < members.size(); ++i)
        if (!(members[i].types & null)) bits |= 1U << i;
    return bits;
}

// What an object or a list consists of. A map is an object whose keys are data.
template <class Reader>
struct Shape {
    std::span<const Member<Reader>> members{};  // of an object, at most 32
    const Member<Reader>* entry = nullptr;      // of a list or map: what each value is
    void (Reader::*begin)() = nullptr;          // key() is still the key of the object itself
    bool (Reader::*end)() = nullptr;            // returns false if the content is invalid
    unsigned required = bitsOfRequired(members);
};

// Base of a reader of one format: `Derived` has the functions that the table calls. For one thread
// at a time; one document after the other.
template <class Derived>
class StrictReader {
public:
    // `root` describes the outermost object and outlives the reader.
    explicit StrictReader(const Shape<Derived>& root)
        : rootEntry_{{}, object, nullptr, &root}, rootList_{{}, &rootEntry_, nullptr, nullptr} {}
    StrictReader(const StrictReader&) = delete;
    StrictReader& operator=(const StrictReader&) = delete;

    // Parses in place, so the document is garbage afterwards. Throws Error if it is unreadable.
    template <class Error>
    void read(std::string& document);

    // The last key that was read. Valid as long as the document.
    std::string_view key() const { return key_; }

    // The parser's events; returning false ends the parsing.
    bool Key(const char* s, rapidjson::SizeType size, bool);
    bool String(const char* s, rapidjson::SizeType size, bool) {
        return isFreeOfSurrogates({s, size}) && take({text, {s, size}});
    }
    bool RawNumber(const char* s, rapidjson::SizeType size, bool) {
        return take({number, {s, size}});
    }
    bool Null() { return take({null}); }
    bool Bool(bool value) { return take({boolean, {}, value}); }
    bool StartObject() { return start(object); }
    bool StartArray() { return start(list); }
    bool EndObject(rapidjson::SizeType) { return finish(); }
    bool EndArray(rapidjson::SizeType) { return finish(); }
    // Never sent, since numbers are passed on as they are written.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

protected:
    ~StrictReader() = default;

private:
    struct Frame {
        const Shape<Derived>* shape;
        const Member<Derived>* member;  // of the present value; nullptr if unknown
        unsigned seen;                  // a bit for each of the shape's members
    };

    Frame& frame() { return frames_[known_]; }
    bool ignored() { return depth_ > known_ || !frame().member; }
    bool accept(Type type) {
        Frame& at = frame();
        if (!(at.member->types & type)) return false;
        if (!at.shape->entry) at.seen |= 1U << (at.member - at.shape->members.data());
        return true;
    }
    bool take(const Scalar& value) {
        if (ignored()) return true;
        return accept(value.type) && frame().member->take(self(), value);
    }
    bool start(Type type);
    bool finish();
    Derived& self() { return static_cast<Derived&>(*this); }

    const Member<Derived> rootEntry_;
    const Shape<Derived> rootList_;
    std::array<Frame, greatestDepth + 1> frames_;
    std::size_t known_ = 0;  // nesting of what the table describes
    std::size_t depth_ = 0;  // nesting with that of an unknown value
    std::string_view key_;
};

template <class Derived>
template <class Error>
void StrictReader<Derived>::read(std::string& document) {
    // Checking the encoding first lets the parser pass over strings in blocks.
    if (!text::isValidUtf8(document)) throw Error("not well-formed UTF-8");
    frames_[0] = {&rootList_, &rootEntry_, 0};
    known_ = depth_ = 0;
    constexpr unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag;
    const std::size_t size = document.size();
    document.append(16, '\0');  // the parser may look at fifteen bytes behind the end
    rapidjson::Reader parser;
    rapidjson::InsituStringStream stream(document.data());
    const auto result = parser.template Parse<flags>(stream, *this);
    // The parser takes a zero byte within the document for its end.
    if (result.IsError() || stream.Tell() != size)
        throw Error("not well-formed, or of another shape, at byte " +
                    std::to_string(result.Offset()));
}

template <class Derived>
bool StrictReader<Derived>::Key(const char* s, rapidjson::SizeType size, bool) {
    const std::string_view name(s, size);
    if (!isFreeOfSurrogates(name)) return false;
    if (depth_ > known_) return true;
    key_ = name;
    Frame& at = frame();
    if (at.shape->entry) return true;
    at.member = nullptr;
    for (const auto& member : at.shape->members) {
        if (member.name != name) continue;
        at.member = &member;
        break;
    }
    return true;
}

template <class Derived>
bool StrictReader<Derived>::start(Type type) {
    if (depth_ == greatestDepth) return false;
    if (!ignored()) {
        if (!accept(type)) return false;
        const auto* shape = frame().member->shape;
        if (shape->begin) (self().*shape->begin)();
        frames_[++known_] = {shape, shape->entry, 0};
    }
    ++depth_;
    return true;
}

template <class Derived>
bool StrictReader<Derived>::finish() {
    if (depth_-- > known_) return true;
    const Frame& done = frames_[known_--];
    if ((done.seen & done.shape->required) != done.shape->required) return false;
    return !done.shape->end || (self().*done.shape->end)();
}

}  // namespace quorvi::json
