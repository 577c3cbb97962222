#pragma once

#include <deque>
#include <map>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/linux/postgres/PostgresJob.h"

namespace quorvi {

// Saves records in batches of one zone each. Each batch is one statement and transaction; its
// records are saved or refused individually.
class PostgresSave : public PostgresJob {
public:
    PostgresSave(std::vector<CloudRecord> records, Promise<std::vector<CloudSaveResult>> promise);

    std::optional<PostgresQuery> next(const PostgresAccount& account) override;
    void answered(const PostgresAnswer& answer) override;
    void failed(const std::exception_ptr& why) override;

private:
    using Batch = std::vector<std::size_t>;  // indexes of records

    Batch nextBatch();
    PostgresQuery query(const Batch& batch) const;
    void take(const Batch& batch, const PostgresResult& rows);
    void refuse(const Batch& batch, const CloudError& error);
    void finish();

    std::vector<CloudRecord> records_;
    std::map<std::size_t, CloudError> errors_;  // by index
    std::deque<Batch> sent_;                    // awaiting answers
    std::size_t done_ = 0;                      // records in batches so far
    bool heard_ = false;                        // at least one batch was answered
    bool finished_ = false;
    Promise<std::vector<CloudSaveResult>> promise_;
};

}  // namespace quorvi
