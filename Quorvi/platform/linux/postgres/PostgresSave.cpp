#include "Quorvi/platform/linux/postgres/PostgresSave.h"

#include <charconv>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

// Larger statements are no faster, and block the account for longer.
constexpr std::size_t recordsInBatch = 2'000;
constexpr std::size_t bytesInBatch = 4 << 20;
// As in the table definition.
constexpr std::size_t largestPayload = 16 << 20;
// The limit of an index entry, less the account.
constexpr std::size_t longestName = 2'000;

bool isText(std::string_view text) {
    return text.size() <= longestName && text.find('\0') == text.npos && text::isValidUtf8(text);
}

// Returns 0 for a record that was never saved; a foreign tag matches no version.
std::int64_t versionOf(const std::string& tag) {
    if (tag.empty()) return 0;
    std::int64_t version = 0;
    const auto end = tag.data() + tag.size();
    const auto [stop, error] = std::from_chars(tag.data(), end, version);
    return error == std::errc{} && stop == end && version > 0 ? version : -1;
}

std::size_t sizeOf(const CloudRecord& record) {
    return record.payload ? record.payload->size() : 0;
}

}  // namespace

PostgresSave::PostgresSave(std::vector<CloudRecord> records,
                           Promise<std::vector<CloudSaveResult>> promise)
    : records_(std::move(records)), promise_(std::move(promise)) {}

std::optional<PostgresQuery> PostgresSave::next(const PostgresAccount&) {
    auto batch = nextBatch();
    if (batch.empty()) {
        if (sent_.empty()) finish();
        return std::nullopt;
    }
    auto statement = query(batch);
    sent_.push_back(std::move(batch));
    return statement;
}

// A batch has one zone and each name once, so that the second save of a name sees the version of
// the first.
PostgresSave::Batch PostgresSave::nextBatch() {
    Batch batch;
    std::size_t bytes = 0;
    std::unordered_set<std::string_view> names;
    for (; done_ < records_.size() && batch.size() < recordsInBatch; ++done_) {
        const auto& record = records_[done_];
        if (!isText(record.id.zone) || !isText(record.id.name) || !isText(record.type)) {
            heard_ = true;
            errors_.emplace(
                done_, CloudError(cloudErrorCode::invalidArguments, "A name can't be stored."));
            continue;
        }
        if (sizeOf(record) > largestPayload) {
            heard_ = true;
            errors_.emplace(done_,
                            CloudError(cloudErrorCode::limitExceeded, "A record is too large."));
            continue;
        }
        if (!batch.empty() && (record.id.zone != records_[batch.front()].id.zone ||
                               bytes + sizeOf(record) > bytesInBatch))
            break;
        if (!names.insert(record.id.name).second) break;
        bytes += sizeOf(record);
        batch.push_back(done_);
    }
    return batch;
}

PostgresQuery PostgresSave::query(const Batch& batch) const {
    std::size_t names = 0, types = 0, payloads = 0;
    for (const auto place : batch) {
        names += records_[place].id.name.size();
        types += records_[place].type.size();
        payloads += sizeOf(records_[place]);
    }
    PostgresQuery query(
        "SELECT s.place, s.code, s.version, s.type, s.payload"
        " FROM quorvi.save_records($1, $2, $3, $4, $5) s");
    query.text(records_[batch.front()].id.zone)
        .texts(batch.size(), names)
        .texts(batch.size(), types)
        .numbers(batch.size())
        .blobs(batch.size(), payloads);
    for (const auto place : batch) {
        const auto& record = records_[place];
        query.add(1, record.id.name);
        query.add(2, record.type);
        query.add(3, versionOf(record.changeTag));
        query.add(4, record.payload);
    }
    return query;
}

void PostgresSave::answered(const PostgresAnswer& answer) {
    const auto batch = std::move(sent_.front());
    sent_.pop_front();
    if (answer.error) {
        refuse(batch, *answer.error);
    } else {
        take(batch, answer.result);
        heard_ = true;
    }
    if (sent_.empty() && done_ == records_.size()) finish();
}

void PostgresSave::take(const Batch& batch, const PostgresResult& rows) {
    enum Column { placeColumn, codeColumn, versionColumn, typeColumn, payloadColumn };
    const auto code = static_cast<int>(rows.number(0, codeColumn));
    if (code != 0) {
        refuse(batch, CloudError(code, "There is no such zone."));
        return;
    }
    for (int row = 1; row < rows.rows(); ++row) {
        const auto place = batch.at(static_cast<std::size_t>(rows.number(row, placeColumn)) - 1);
        if (rows.number(row, codeColumn) == cloudErrorCode::unknownItem) {
            errors_.emplace(place,
                            CloudError(cloudErrorCode::unknownItem, "There is no such record."));
            continue;
        }
        CloudRecord stored{.id = records_[place].id,
                           .type = std::string(rows.text(row, typeColumn)),
                           .payload = rows.bytes(row, payloadColumn),
                           .changeTag = std::to_string(rows.number(row, versionColumn))};
        errors_.emplace(
            place, CloudError(cloudErrorCode::serverRecordChanged,
                              "The record has changed in the meantime.", {}, std::move(stored)));
    }
    const auto before = rows.number(0, versionColumn);
    for (std::size_t i = 0; i < batch.size(); ++i)
        if (!errors_.contains(batch[i]))
            records_[batch[i]].changeTag =
                std::to_string(before + static_cast<std::int64_t>(i) + 1);
}

void PostgresSave::refuse(const Batch& batch, const CloudError& error) {
    for (const auto place : batch) errors_.emplace(place, error);
}

void PostgresSave::failed(const std::exception_ptr& why) {
    if (finished_) return;
    try {
        std::rethrow_exception(why);
    } catch (const CloudError& error) {
        for (const auto& batch : sent_) refuse(batch, error);
        for (; done_ < records_.size(); ++done_) errors_.emplace(done_, error);
        finish();
    } catch (...) {
        finished_ = true;
        promise_.reject(why);
    }
}

void PostgresSave::finish() {
    if (std::exchange(finished_, true)) return;
    if (!heard_ && !errors_.empty()) {
        promise_.reject(std::make_exception_ptr(CloudError(errors_.begin()->second)));
        return;
    }
    std::vector<CloudSaveResult> results;
    results.reserve(records_.size());
    for (std::size_t i = 0; i < records_.size(); ++i) {
        const auto error = errors_.find(i);
        results.push_back({std::move(records_[i]), error == errors_.end()
                                                       ? std::nullopt
                                                       : std::optional(std::move(error->second))});
    }
    promise_.resolve(std::move(results));
}

}  // namespace quorvi
