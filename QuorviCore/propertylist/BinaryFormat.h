#pragma once

#include <cstdint>
#include <string_view>

// Constants of the binary property list format, version 1.0. A file consists of a magic number,
// objects, a table of their offsets, and a trailer. The high nibble of the first byte of an object
// is its kind.
namespace quorvi::binaryPropertyList {

inline constexpr std::string_view magic = "bplist00";
inline constexpr std::size_t trailerSize = 32;

inline constexpr int kindSimple = 0x0;
inline constexpr int kindInteger = 0x1;  // 2^low bytes
inline constexpr int kindReal = 0x2;     // 2^low bytes
inline constexpr int kindDate = 0x3;     // a real of eight bytes
inline constexpr int kindData = 0x4;
inline constexpr int kindAscii = 0x5;
inline constexpr int kindUtf16 = 0x6;  // the length counts units
inline constexpr int kindUid = 0x8;    // low + 1 bytes
inline constexpr int kindArray = 0xA;
inline constexpr int kindDictionary = 0xD;  // all keys, then all values

inline constexpr std::uint8_t markerNull = 0x00;
inline constexpr std::uint8_t markerFalse = 0x08;
inline constexpr std::uint8_t markerTrue = 0x09;
inline constexpr std::uint8_t lengthFollows = 0xF;

}  // namespace quorvi::binaryPropertyList
