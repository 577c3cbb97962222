#include "QuorviCore/propertylist/PropertyList.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "QuorviCore/base/Nesting.h"

namespace quorvi::test {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

std::string fromHex(std::string_view hex) {
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2)
        bytes.push_back(static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
    return bytes;
}

// One value of every type, as Python's plistlib writes it with sorted keys.
const std::string everyType = fromHex(
    "62706c6973743030df100f0102030405060708090a0b0c0d0e0f101415161718191a1b1c1d1e1f2021556172726179"
    "5362696755627974657354646174655566616c7365546875676553696e74546c6f6e67536e6567536e756c54726561"
    "6c54746578745474727565537569645477696465a31112131001a0d0140000000000000000ffffffffffffffff4200"
    "ff333ff00000000000000813000001000000000011012c5f100f78787878787878787878787878787813ffffffffff"
    "fffffb5461006201233fb999999999999a6503a903bc0020d83dde00098007120001117008292f33393e44494d5256"
    "5a5f64696d727678797a8b8e9798a1a4b6bfc4cdd8d9db000000000000010100000000000000220000000000000000"
    "00000000000000e0");

PropertyList::WideInteger wide(std::uint8_t high, std::uint8_t low) {
    PropertyList::WideInteger result;
    for (std::size_t i = 0; i < 16; ++i) result.bytes[i] = i < 8 ? high : low;
    return result;
}

PropertyList nested(std::size_t depth) {
    PropertyList list{true};
    for (; depth > 0; --depth) list = PropertyList{Array{std::move(list)}};
    return list;
}

// Makes a file of objects with one-byte offsets and references; the first object is the top.
std::string file(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string table;
    for (const auto& object : objects) {
        table.push_back(static_cast<char>(bytes.size()));
        bytes += object;
    }
    const auto start = static_cast<char>(bytes.size());
    bytes += table + std::string(6, '\0') + "\x01\x01" + std::string(7, '\0');
    bytes.push_back(static_cast<char>(objects.size()));
    bytes += std::string(15, '\0');
    bytes.push_back(start);
    return bytes;
}

// Whatever can be read survives a round trip.
void expectConsistent(const std::string& bytes) {
    const auto list = PropertyList::fromBinary(bytes);
    if (!list) return;
    const auto written = list->toBinary();
    const auto again = PropertyList::fromBinary(written);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->toBinary(), written);
}

TEST(PropertyList, ReadsAndWritesTheBytesOfAnotherImplementation) {
    const PropertyList expected{Dictionary{
        {"array", {Array{{std::int64_t{1}}, {Array{}}, {Dictionary{}}}}},
        {"big", {wide(0, 0xFF)}},
        {"bytes", {Bytes{0, 0xFF}}},
        {"date", {Date{1}}},
        {"false", {false}},
        {"huge", {std::int64_t{1} << 40}},
        {"int", {std::int64_t{300}}},
        {"long", {std::string(15, 'x')}},
        {"neg", {std::int64_t{-5}}},
        {"nul", {std::string("a\0b\1", 4)}},
        {"real", {0.1}},
        {"text", {std::string("Ωμ 😀")}},
        {"true", {true}},
        {"uid", {PropertyList::Uid{7}}},
        {"wide", {std::int64_t{70000}}},
    }};
    EXPECT_EQ(PropertyList::fromBinary(everyType), expected);
    EXPECT_EQ(expected.toBinary(), everyType);
}

TEST(PropertyList, KeepsValuesOfSeveralBytes) {
    Array items;
    for (std::int64_t i = -40'000; i < 40'000; i += 7) items.push_back({i * i * i * 50'000});
    for (const auto value : {INT64_MIN, INT64_MAX, std::int64_t{0xFFFFFFFF}})
        items.push_back({value});
    items.push_back({std::string(70'000, 'a') + "\u0001\uFFFF\U0010FFFF"});
    items.push_back({PropertyList::Null{}});
    items.push_back({PropertyList::Uid{0x123456789}});
    const PropertyList list{items};
    EXPECT_TRUE(PropertyList::fromBinary(list.toBinary()) == list);
}

TEST(PropertyList, RefusesWhatWouldTakeAllMemoryOrTheStack) {
    std::vector<std::string> doubling;
    for (char i = 1; i < 60; ++i) doubling.push_back({'\xA2', i, i});
    doubling.push_back("\x09");
    const std::vector<std::pair<const char*, std::string>> hostile{
        {"contains itself", file({std::string("\xA1\0", 2)})},
        {"doubled sixty times", file(doubling)},
        {"length of 2^63", file({"\x5F\x13\x80" + std::string(7, '\0')})},
        {"references of 2^62", file({"\xDF\x13\x40" + std::string(7, '\0')})},
        {"units of 2^63", file({"\x6F\x13\x80" + std::string(7, '\0')})},
        {"key that is no string", file({"\xD1\x01\x01", "\x09"})},
        {"two equal keys", file({"\xD2\x01\x01\x02\x02", "\x51k", "\x09"})},
        {"reference to nothing", file({"\xA1\x05"})},
        {"unknown type", file({"\x70"})},
        {"nothing", ""},
        {"another format", "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict/></plist>"},
    };
    for (const auto& [what, bytes] : hostile) EXPECT_FALSE(PropertyList::fromBinary(bytes)) << what;

    const auto deepest = nested(greatestDepth);
    EXPECT_TRUE(PropertyList::fromBinary(deepest.toBinary()) == deepest);
    EXPECT_THROW(nested(greatestDepth + 1).toBinary(), std::length_error);
}

TEST(PropertyList, SurvivesEveryCutAndManyDamages) {
    for (std::size_t size = 0; size < everyType.size(); ++size)
        EXPECT_FALSE(PropertyList::fromBinary(everyType.substr(0, size))) << size;
    for (std::size_t i = 0; i < everyType.size(); ++i) {
        for (int value = 0; value < 256; ++value) {
            auto damaged = everyType;
            damaged[i] = static_cast<char>(value);
            expectConsistent(damaged);
        }
    }
    std::mt19937 random(11);
    for (int round = 0; round < 20'000; ++round) {
        auto damaged = everyType;
        for (auto n = 2 + random() % 6; n > 0; --n)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        expectConsistent(damaged);
    }
}

}  // namespace
}  // namespace quorvi::test
