#include "Quorvi/platform/linux/postgres/PostgresChanges.h"

#include <charconv>
#include <cstdint>
#include <utility>

namespace quorvi {

namespace {

constexpr std::int64_t bytesInPage = 8 << 20;

// The content of a token.
struct Token {
    std::string subject;
    std::int64_t version = 0;
    bool valid = true;

    static Token parse(const std::string& text) {
        Token token;
        if (text.empty()) return token;
        const auto dot = text.rfind('.');
        const auto digits = dot == text.npos ? text.size() : dot + 1;
        const auto end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data() + digits, end, token.version);
        token.valid = dot != text.npos && dot > 0 && error == std::errc{} && stop == end &&
                      token.version >= 0;
        if (!token.valid) token.version = 0;
        token.subject = text.substr(0, token.valid ? dot : 0);
        return token;
    }
    bool isFirst() const { return valid && subject.empty(); }
};

// A token of another account or an earlier zone, or one that is ahead of the database, which has
// then been restored to an older state.
void check(const Token& token, const std::string& subject, std::int64_t lastVersion) {
    if (token.isFirst()) return;
    if (!token.valid || token.subject != subject || token.version > lastVersion)
        throw CloudError(cloudErrorCode::changeTokenExpired, "The change token has expired.");
}

std::string tokenText(const std::string& subject, std::int64_t version) {
    return subject + '.' + std::to_string(version);
}

[[noreturn]] void throwNoAccount() {
    throw CloudError(cloudErrorCode::permissionFailure, "The account was removed.");
}

[[noreturn]] void throwNoZone() {
    throw CloudError(cloudErrorCode::zoneNotFound, "There is no such zone.");
}

template <class T>
std::shared_ptr<PostgresJob> request(PostgresQuery query, Promise<T> promise,
                                     typename PostgresRequest<T>::Read read) {
    auto make = [query = std::move(query)](const PostgresAccount&) { return query; };
    return std::make_shared<PostgresRequest<T>>(std::move(promise), std::move(make),
                                                std::move(read));
}

// The first row describes the zone, even if there are no records.
enum ZoneColumn {
    generationColumn,
    lastVersionColumn,
    nameColumn,
    typeColumn,
    versionColumn,
    payloadColumn
};

CloudRecord recordAt(const PostgresResult& rows, int row, std::string zone) {
    return {.id = {std::move(zone), std::string(rows.text(row, nameColumn))},
            .type = std::string(rows.text(row, typeColumn)),
            .payload = rows.bytes(row, payloadColumn),
            .changeTag = std::to_string(rows.number(row, versionColumn))};
}

}  // namespace

std::shared_ptr<PostgresJob> fetchRecordJob(CloudRecordID id, Promise<CloudRecord> promise) {
    PostgresQuery query(
        "SELECT z.generation, z.version, r.name, r.type, r.version, r.payload FROM quorvi.zones z"
        " LEFT JOIN quorvi.records r ON r.account = z.account AND r.zone = z.generation"
        " AND r.name = $2 WHERE z.account = CURRENT_USER::text AND z.name = $1");
    query.text(id.zone).text(id.name);
    return request<CloudRecord>(
        std::move(query), std::move(promise),
        [zone = id.zone](const PostgresResult& rows, const PostgresAccount&) {
            if (rows.rows() == 0 || rows.isNull(0, generationColumn)) throwNoZone();
            if (rows.isNull(0, nameColumn))
                throw CloudError(cloudErrorCode::unknownItem, "There is no such record.");
            return recordAt(rows, 0, zone);
        });
}

std::shared_ptr<PostgresJob> zoneChangesJob(const std::string& token,
                                            Promise<CloudZoneChanges> promise) {
    enum Column { lastVersion, name, exists };
    const auto since = Token::parse(token);
    PostgresQuery query(
        "SELECT a.version, z.name, z.generation IS NOT NULL FROM quorvi.accounts a"
        " LEFT JOIN quorvi.zones z ON z.account = a.account AND z.version > $1"
        " WHERE a.account = CURRENT_USER::text");
    query.number(since.version);
    return request<CloudZoneChanges>(
        std::move(query), std::move(promise),
        [since](const PostgresResult& rows, const PostgresAccount& account) {
            if (rows.rows() == 0) throwNoAccount();
            check(since, account.id, rows.number(0, lastVersion));
            CloudZoneChanges changes;
            for (int row = 0; row < rows.rows() && !rows.isNull(0, name); ++row) {
                if (rows.boolean(row, exists))
                    changes.modified.emplace_back(rows.text(row, name));
                else if (!since.isFirst())
                    changes.deleted.emplace_back(rows.text(row, name));
            }
            changes.token = tokenText(account.id, rows.number(0, lastVersion));
            return changes;
        });
}

std::shared_ptr<PostgresJob> recordChangesJob(std::string zone, const std::string& token,
                                              std::size_t limit,
                                              Promise<CloudRecordChanges> promise) {
    const auto since = Token::parse(token);
    PostgresQuery query(
        "SELECT z.generation, a.version, r.name, r.type, r.version, r.payload"
        " FROM quorvi.accounts a"
        " LEFT JOIN quorvi.zones z ON z.account = a.account AND z.name = $1"
        " LEFT JOIN LATERAL (SELECT * FROM (SELECT l.*, pg_catalog.sum(l.size)"
        " OVER (ORDER BY l.version) - l.size AS before FROM (SELECT r.name, r.type, r.version,"
        " r.payload, COALESCE(pg_catalog.octet_length(r.payload), 0) AS size FROM quorvi.records r"
        " WHERE r.account = CURRENT_USER::text AND r.zone = z.generation AND r.version > $2"
        " ORDER BY r.version LIMIT $3) l) s WHERE s.before < $4 ORDER BY s.version) r ON true"
        " WHERE a.account = CURRENT_USER::text");
    query.text(zone)
        .number(since.version)
        .number(static_cast<std::int64_t>(limit))
        .number(bytesInPage);
    return request<CloudRecordChanges>(
        std::move(query), std::move(promise),
        [since, limit, zone](const PostgresResult& rows, const PostgresAccount&) {
            if (rows.rows() == 0) throwNoAccount();
            if (rows.isNull(0, generationColumn)) throwNoZone();
            const auto generation = std::to_string(rows.number(0, generationColumn));
            check(since, generation, rows.number(0, lastVersionColumn));
            CloudRecordChanges changes;
            auto last = since.version;
            std::int64_t bytes = 0;
            const int count = rows.isNull(0, nameColumn) ? 0 : rows.rows();
            changes.modified.reserve(static_cast<std::size_t>(count));
            for (int row = 0; row < count; ++row) {
                changes.modified.push_back(recordAt(rows, row, zone));
                last = rows.number(row, versionColumn);
                const auto& payload = changes.modified.back().payload;
                bytes += payload ? static_cast<std::int64_t>(payload->size()) : 0;
            }
            changes.token = tokenText(generation, last);
            changes.more = changes.modified.size() == limit || bytes >= bytesInPage;
            return changes;
        });
}

}  // namespace quorvi
