#pragma once

#include <string>
#include <utility>

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

// Stands where the address of the cloud makes no sense: every operation says so.
class UnusableCloudDatabase final : public CloudDatabase {
public:
    explicit UnusableCloudDatabase(std::string reason) : reason_(std::move(reason)) {}

    Task<CloudAccountStatus> accountStatus(std::stop_token) override {
        throw error();
        co_return CloudAccountStatus::couldNotDetermine;
    }
    Task<std::string> userRecordName(std::stop_token) override {
        throw error();
        co_return std::string();
    }
    Task<void> saveZone(std::string, std::stop_token) override {
        throw error();
        co_return;
    }
    Task<void> deleteZone(std::string, std::stop_token) override {
        throw error();
        co_return;
    }
    Task<std::vector<CloudSaveResult>> saveRecords(std::vector<CloudRecord>,
                                                   std::stop_token) override {
        throw error();
        co_return std::vector<CloudSaveResult>();
    }
    Task<CloudRecord> fetchRecord(CloudRecordID, std::stop_token) override {
        throw error();
        co_return CloudRecord();
    }
    Task<CloudZoneChanges> zoneChanges(std::string, std::stop_token) override {
        throw error();
        co_return CloudZoneChanges();
    }
    Task<CloudRecordChanges> recordChanges(std::string, std::string, std::stop_token) override {
        throw error();
        co_return CloudRecordChanges();
    }
    Task<void> saveSubscription(std::string, std::stop_token) override {
        throw error();
        co_return;
    }
    Subscription onRemoteChange(std::function<void()>) override { return {}; }
    Subscription onAccountChange(std::function<void()>) override { return {}; }

private:
    CloudError error() const { return CloudError(cloudErrorCode::badContainer, reason_); }

    std::string reason_;
};

}  // namespace quorvi
