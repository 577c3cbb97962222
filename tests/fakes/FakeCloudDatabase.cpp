#include "tests/fakes/FakeCloudDatabase.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/async/Future.h"

namespace quorvi::test {

// --- the server ---

void FakeCloudServer::put(Account& account, const std::string& zone, CloudRecord record,
                          bool isDeleted) {
    auto& target = account.zones[zone];
    const auto name = record.id.name;
    auto& stored = target.records[name];
    target.changes.erase(stored.sequence);
    stored = {std::move(record), ++sequence_, isDeleted};
    target.changes.emplace(sequence_, name);
    account.modified[zone] = sequence_;
}

void FakeCloudServer::removeZone(Account& account, const std::string& zone) {
    const auto found = account.zones.find(zone);
    if (found == account.zones.end()) return;
    account.zones.erase(found);
    account.modified.erase(zone);
    account.deleted[zone] = ++sequence_;
}

void FakeCloudServer::resetZone(const std::string& user, const std::string& zone) {
    removeZone(account(user), zone);
    push(user, nullptr);
}

void FakeCloudServer::deleteRecord(const std::string& user, const CloudRecordID& id) {
    put(account(user), id.zone, {.id = id}, true);
    push(user, nullptr);
}

std::optional<CloudRecord> FakeCloudServer::record(const std::string& user,
                                                   const CloudRecordID& id) const {
    const auto all = records(user, id.zone);
    const auto found = all.find(id.name);
    return found == all.end() ? std::nullopt : std::optional(found->second);
}

std::map<std::string, CloudRecord> FakeCloudServer::records(const std::string& user,
                                                            const std::string& zone) const {
    std::map<std::string, CloudRecord> all;
    if (std::ranges::count(zones(user), zone))
        for (const auto& [name, stored] : accounts_.at(user).zones.at(zone).records)
            if (!stored.isDeleted) all.emplace(name, stored.record);
    return all;
}

std::vector<std::string> FakeCloudServer::zones(const std::string& user) const {
    std::vector<std::string> names;
    if (const auto found = accounts_.find(user); found != accounts_.end())
        for (const auto& [name, zone] : found->second.zones) names.push_back(name);
    return names;
}

void FakeCloudServer::push(const std::string& user, const FakeCloudDatabase* author) {
    for (auto* device : devices_) {
        if (device == author || device->user_ != user || device->subscriptions.empty()) continue;
        scheduler_.post(lifetime_.guard([this, device] {
            if (devices_.contains(device)) device->remoteChange_.notify();
        }));
    }
}

// --- a machine ---

FakeCloudDatabase::FakeCloudDatabase(Scheduler& scheduler, FakeCloudServer& server,
                                     std::string user)
    : scheduler_(scheduler), server_(server), user_(std::move(user)) {
    server_.devices_.insert(this);
}

FakeCloudDatabase::~FakeCloudDatabase() {
    server_.devices_.erase(this);
}

void FakeCloudDatabase::release(CloudOperation operation) {
    const auto gates = gates_.extract(operation);
    for (const auto& gate : gates.mapped()) gate->resolve();
}

void FakeCloudDatabase::signIn(const std::string& user) {
    user_ = user;
    accountChange_.notify();
}

// The beginning of every operation: takes at least a turn, and throws the failure set by the test.
Task<void> FakeCloudDatabase::arrive(CloudOperation operation, std::stop_token stop) {
    ++calls[operation];
    throwIfStopped(stop);
    if (const auto held = gates_.find(operation); held != gates_.end()) {
        const auto gate = std::make_shared<Promise<void>>(scheduler_);
        held->second.push_back(gate);
        auto opening = gate->future(stop);
        co_await opening;
    }
    auto waiting = sleepFor(scheduler_, delay, stop);
    co_await waiting;
    throwIfStopped(stop);
    if (const auto found = failures_.find(operation); found != failures_.end()) {
        const auto [error, always] = found->second;
        if (!always) failures_.erase(found);
        throw error;
    }
    if (user_.empty() && operation != CloudOperation::accountStatus)
        throw CloudError(cloudErrorCode::notAuthenticated, "Nobody is signed in.");
}

FakeCloudServer::Account& FakeCloudDatabase::account() {
    return server_.account(user_);
}

Task<CloudAccountStatus> FakeCloudDatabase::accountStatus(std::stop_token stop) {
    auto arriving = arrive(CloudOperation::accountStatus, stop);
    co_await arriving;
    co_return status.value_or(user_.empty() ? CloudAccountStatus::noAccount
                                            : CloudAccountStatus::available);
}

Task<std::string> FakeCloudDatabase::userRecordName(std::stop_token stop) {
    auto arriving = arrive(CloudOperation::userRecordName, stop);
    co_await arriving;
    co_return user_;
}

Task<void> FakeCloudDatabase::saveZone(std::string zone, std::stop_token stop) {
    auto arriving = arrive(CloudOperation::saveZone, stop);
    co_await arriving;
    if (account().zones.contains(zone)) co_return;
    account().zones[zone].generation = ++server_.sequence_;
    account().modified[zone] = server_.sequence_;
    server_.push(user_, this);
}

Task<void> FakeCloudDatabase::deleteZone(std::string zone, std::stop_token stop) {
    auto arriving = arrive(CloudOperation::deleteZone, stop);
    co_await arriving;
    server_.removeZone(account(), zone);
    server_.push(user_, this);
}

Task<std::vector<CloudSaveResult>> FakeCloudDatabase::saveRecords(std::vector<CloudRecord> records,
                                                                  std::stop_token stop) {
    savedBatchSizes.push_back(records.size());
    auto arriving = arrive(CloudOperation::saveRecords, stop);
    co_await arriving;
    std::vector<CloudSaveResult> results;
    for (auto& record : records) results.push_back(save(std::move(record)));
    server_.push(user_, this);
    co_return results;
}

CloudSaveResult FakeCloudDatabase::save(CloudRecord record) {
    const auto refuse = [&record](int code, std::optional<CloudRecord> stored = std::nullopt) {
        return CloudSaveResult{record,
                               CloudError(code, "refused", std::nullopt, std::move(stored))};
    };
    if (const auto failure = recordFailures_.extract(record.id.name))
        return {std::move(record), failure.mapped()};
    const auto zone = account().zones.find(record.id.zone);
    if (zone == account().zones.end()) return refuse(cloudErrorCode::zoneNotFound);
    const auto found = zone->second.records.find(record.id.name);
    const bool exists = found != zone->second.records.end() && !found->second.isDeleted;
    if (!exists && !record.changeTag.empty()) return refuse(cloudErrorCode::unknownItem);
    if (exists && record.changeTag != found->second.record.changeTag)
        return refuse(cloudErrorCode::serverRecordChanged, found->second.record);
    record.changeTag = "tag" + std::to_string(server_.sequence_ + 1);
    server_.put(account(), record.id.zone, record, false);
    return {std::move(record), std::nullopt};
}

Task<CloudRecord> FakeCloudDatabase::fetchRecord(CloudRecordID id, std::stop_token stop) {
    auto arriving = arrive(CloudOperation::fetchRecord, stop);
    co_await arriving;
    if (!account().zones.contains(id.zone))
        throw CloudError(cloudErrorCode::zoneNotFound, "There is no such zone.");
    auto record = server_.record(user_, id);
    if (!record) throw CloudError(cloudErrorCode::unknownItem, "There is no such record.");
    if (damagesPayloads && record->payload) record->payload->push_back(0);
    co_return std::move(*record);
}

std::string FakeCloudDatabase::token(std::uint64_t generation, std::uint64_t sequence) const {
    return std::to_string(server_.tokenEra_) + "." + std::to_string(generation) + "." +
           std::to_string(sequence);
}

std::uint64_t FakeCloudDatabase::sequenceOf(const std::string& given,
                                            std::uint64_t generation) const {
    if (given.empty()) return 0;
    const auto start = given.rfind('.') + 1;
    std::uint64_t sequence = 0;
    std::from_chars(given.data() + start, given.data() + given.size(), sequence);
    if (given != token(generation, sequence))
        throw CloudError(cloudErrorCode::changeTokenExpired, "The token has expired.");
    return sequence;
}

Task<CloudZoneChanges> FakeCloudDatabase::zoneChanges(std::string since, std::stop_token stop) {
    auto arriving = arrive(CloudOperation::zoneChanges, stop);
    co_await arriving;
    const auto sequence = sequenceOf(since, 0);
    CloudZoneChanges changes;
    for (const auto& [zone, changed] : account().modified)
        if (changed > sequence) changes.modified.push_back(zone);
    if (!since.empty())
        for (const auto& [zone, deleted] : account().deleted)
            if (deleted > sequence && !account().zones.contains(zone))
                changes.deleted.push_back(zone);
    changes.token = token(0, server_.sequence_);
    co_return changes;
}

Task<CloudRecordChanges> FakeCloudDatabase::recordChanges(std::string zone, std::string since,
                                                          std::stop_token stop) {
    auto arriving = arrive(CloudOperation::recordChanges, stop);
    co_await arriving;
    const auto found = account().zones.find(zone);
    if (found == account().zones.end())
        throw CloudError(cloudErrorCode::zoneNotFound, "There is no such zone.");
    const auto& source = found->second;
    auto sequence = sequenceOf(since, source.generation);
    CloudRecordChanges page;
    auto next = source.changes.upper_bound(sequence);
    for (std::size_t count = 0; next != source.changes.end() && count < pageSize; ++next, ++count) {
        const auto& stored = source.records.at(next->second);
        if (!stored.isDeleted)
            page.modified.push_back(stored.record);
        else if (!since.empty())
            page.deleted.push_back(stored.record.id);
        sequence = next->first;
    }
    page.more = next != source.changes.end();
    page.token = token(source.generation, sequence);
    co_return page;
}

Task<void> FakeCloudDatabase::saveSubscription(std::string id, std::stop_token stop) {
    auto arriving = arrive(CloudOperation::saveSubscription, stop);
    co_await arriving;
    subscriptions.insert(std::move(id));
}

Subscription FakeCloudDatabase::onRemoteChange(std::function<void()> observer) {
    return remoteChange_.subscribe(std::move(observer));
}

Subscription FakeCloudDatabase::onAccountChange(std::function<void()> observer) {
    return accountChange_.subscribe(std::move(observer));
}

}  // namespace quorvi::test
