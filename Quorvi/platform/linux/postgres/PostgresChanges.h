#pragma once

#include <memory>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/linux/postgres/PostgresJob.h"

namespace quorvi {

// Questions for what a database holds and what has changed in it. A token says which account or
// which generation of a zone it belongs to, and the version that was read up to.

std::shared_ptr<PostgresJob> fetchRecordJob(CloudRecordID id, Promise<CloudRecord> promise);

std::shared_ptr<PostgresJob> zoneChangesJob(const std::string& token,
                                            Promise<CloudZoneChanges> promise);

// Of at most `limit` records.
std::shared_ptr<PostgresJob> recordChangesJob(std::string zone, const std::string& token,
                                              std::size_t limit,
                                              Promise<CloudRecordChanges> promise);

}  // namespace quorvi
