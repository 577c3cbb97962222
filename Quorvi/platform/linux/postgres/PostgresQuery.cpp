#include "Quorvi/platform/linux/postgres/PostgresQuery.h"

#include <endian.h>

#include <cstring>

namespace quorvi {

namespace {

// Of PostgreSQL's built-in types; they never change.
constexpr Oid byteaType = 17;
constexpr Oid int8Type = 20;
constexpr Oid textType = 25;
constexpr Oid byteaArrayType = 1001;
constexpr Oid textArrayType = 1009;
constexpr Oid int8ArrayType = 1016;

constexpr int binary = 1;

void append32(std::string& to, std::uint32_t value) {
    value = htobe32(value);
    to.append(reinterpret_cast<const char*>(&value), sizeof value);
}

std::string bigEndian(std::int64_t value) {
    const auto swapped = htobe64(static_cast<std::uint64_t>(value));
    return {reinterpret_cast<const char*>(&swapped), sizeof swapped};
}

}  // namespace

PostgresQuery& PostgresQuery::text(std::string_view value) {
    values_.emplace_back(value);
    types_.push_back(textType);
    return *this;
}

PostgresQuery& PostgresQuery::number(std::int64_t value) {
    values_.push_back(bigEndian(value));
    types_.push_back(int8Type);
    return *this;
}

PostgresQuery& PostgresQuery::texts(std::size_t count, std::size_t bytes) {
    return array(textArrayType, textType, count, bytes);
}

PostgresQuery& PostgresQuery::numbers(std::size_t count) {
    return array(int8ArrayType, int8Type, count, count * sizeof(std::int64_t));
}

PostgresQuery& PostgresQuery::blobs(std::size_t count, std::size_t bytes) {
    return array(byteaArrayType, byteaType, count, bytes);
}

PostgresQuery& PostgresQuery::array(Oid type, Oid element, std::size_t count, std::size_t bytes) {
    std::string value;
    value.reserve(20 + bytes + count * 4);
    append32(value, 1);  // dimensions
    append32(value, 1);  // there may be nulls
    append32(value, element);
    append32(value, static_cast<std::uint32_t>(count));
    append32(value, 1);  // the first index
    values_.push_back(std::move(value));
    types_.push_back(type);
    return *this;
}

void PostgresQuery::addBytes(std::size_t parameter, const void* bytes, std::size_t size) {
    append32(values_[parameter], static_cast<std::uint32_t>(size));
    values_[parameter].append(static_cast<const char*>(bytes), size);
}

void PostgresQuery::add(std::size_t parameter, std::string_view element) {
    addBytes(parameter, element.data(), element.size());
}

void PostgresQuery::add(std::size_t parameter, std::int64_t element) {
    add(parameter, bigEndian(element));
}

void PostgresQuery::add(std::size_t parameter, const std::optional<Bytes>& element) {
    if (element)
        addBytes(parameter, element->data(), element->size());
    else
        append32(values_[parameter], static_cast<std::uint32_t>(-1));
}

bool PostgresQuery::queue(PGconn* connection) const {
    std::vector<const char*> values;
    std::vector<int> lengths;
    for (const auto& value : values_) {
        values.push_back(value.data());
        lengths.push_back(static_cast<int>(value.size()));
    }
    const std::vector<int> formats(values_.size(), binary);
    return pq().sendQueryParams(connection, sql_.c_str(), static_cast<int>(values_.size()),
                                types_.data(), values.data(), lengths.data(), formats.data(),
                                binary) == 1;
}

std::int64_t PostgresResult::number(int row, int column) const {
    const char* bytes = pq().getvalue(result_.get(), row, column);
    if (pq().getlength(result_.get(), row, column) == 4) {
        std::uint32_t value;
        std::memcpy(&value, bytes, sizeof value);
        return static_cast<std::int32_t>(be32toh(value));
    }
    std::uint64_t value;
    std::memcpy(&value, bytes, sizeof value);
    return static_cast<std::int64_t>(be64toh(value));
}

std::optional<Bytes> PostgresResult::bytes(int row, int column) const {
    if (isNull(row, column)) return std::nullopt;
    const auto value = text(row, column);
    return Bytes(value.begin(), value.end());
}

}  // namespace quorvi
