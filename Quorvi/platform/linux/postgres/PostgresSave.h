#pragma once

#include <deque>
#include <map>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/linux/postgres/PostgresJob.h"

namespace quorvi {

// Saves records, as many of a zone in one statement as make a good size. Each statement is a
// transaction of its own and its records are saved or refused one by one.
class PostgresSave : public PostgresJob {
public:
    PostgresSave(std::vector<CloudRecord> records, Promise<std::vector<CloudSaveResult>> promise);

    std::optional<PostgresQuery> next(const PostgresAccount& account) override;
    void answered(const PostgresAnswer& answer) override;
    void failed(const std::exception_ptr& why) override;

private:
    using Batch = std::vector<std::size_t>;  // places of records

    Batch nextBatch();
    PostgresQuery query(const Batch& batch) const;
    void take(const Batch& batch, const PostgresResult& rows);
    void refuse(const Batch& batch, const CloudError& error);
    void finish();

    std::vector<CloudRecord> records_;
    std::map<std::size_t, CloudError> errors_;  // by place
    std::deque<Batch> sent_;                    // whose answers are due
    std::size_t done_ = 0;                      // records in batches so far
    bool heard_ = false;                        // something can be said about some of them
    bool finished_ = false;
    Promise<std::vector<CloudSaveResult>> promise_;
};

}  // namespace quorvi
