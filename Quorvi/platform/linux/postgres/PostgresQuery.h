#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/postgres/PqLibrary.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// A statement with parameters in binary format.
class PostgresQuery {
public:
    explicit PostgresQuery(std::string sql) : sql_(std::move(sql)) {}

    PostgresQuery& text(std::string_view value);
    PostgresQuery& number(std::int64_t value);
    // Adds an array parameter with a capacity for `count` elements, filled by add(). `bytes` is an
    // estimate of their total size.
    PostgresQuery& texts(std::size_t count, std::size_t bytes = 0);
    PostgresQuery& numbers(std::size_t count);
    PostgresQuery& blobs(std::size_t count, std::size_t bytes);
    void add(std::size_t parameter, std::string_view element);
    void add(std::size_t parameter, std::int64_t element);
    void add(std::size_t parameter, const std::optional<Bytes>& element);

    // Queues the statement in libpq. Returns false if libpq refuses it.
    bool queue(PGconn* connection) const;

private:
    PostgresQuery& array(Oid type, Oid element, std::size_t count, std::size_t bytes);
    void addBytes(std::size_t parameter, const void* bytes, std::size_t size);

    std::string sql_;
    std::vector<std::string> values_;
    std::vector<Oid> types_;
};

// Rows in binary format.
class PostgresResult {
public:
    PostgresResult() = default;
    explicit PostgresResult(PGresult* result) : result_(result) {}

    explicit operator bool() const { return result_ != nullptr; }
    const PGresult* get() const { return result_.get(); }

    int rows() const { return pq().ntuples(result_.get()); }
    bool isNull(int row, int column) const {
        return pq().getisnull(result_.get(), row, column) == 1;
    }
    bool boolean(int row, int column) const {
        return *pq().getvalue(result_.get(), row, column) != 0;
    }
    std::int64_t number(int row, int column) const;  // an integer of four or eight bytes
    std::string_view text(int row, int column) const {
        return {pq().getvalue(result_.get(), row, column),
                static_cast<std::size_t>(pq().getlength(result_.get(), row, column))};
    }
    std::optional<Bytes> bytes(int row, int column) const;

private:
    struct Clear {
        void operator()(PGresult* result) const { pq().clear(result); }
    };
    std::unique_ptr<PGresult, Clear> result_;
};

}  // namespace quorvi
