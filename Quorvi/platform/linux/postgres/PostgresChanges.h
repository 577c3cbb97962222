#pragma once

#include <memory>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/linux/postgres/PostgresJob.h"

namespace quorvi {

// Jobs that read a database and its changes. A token contains the account, or the generation of a
// zone, and the version that was read up to.

std::shared_ptr<PostgresJob> fetchRecordJob(CloudRecordID id, Promise<CloudRecord> promise);

std::shared_ptr<PostgresJob> zoneChangesJob(const std::string& token,
                                            Promise<CloudZoneChanges> promise);

// Reads at most `limit` records; fewer if they have some megabytes together. One may have more.
std::shared_ptr<PostgresJob> recordChangesJob(std::string zone, const std::string& token,
                                              std::size_t limit,
                                              Promise<CloudRecordChanges> promise);

}  // namespace quorvi
