#pragma once

#include <vector>

#include "Quorvi/platform/UpdateInstaller.h"

namespace quorvi::test {

// Takes every package for the announced one, and records those that are opened.
class FakeUpdateInstaller : public UpdateInstaller {
public:
    Task<PackageIdentity> identify(std::filesystem::path) override { co_return identity; }
    Task<void> open(std::filesystem::path package) override {
        opened.push_back(std::move(package));
        co_return;
    }

    PackageIdentity identity{"quorvi", "2.0"};
    std::vector<std::filesystem::path> opened;
};

}  // namespace quorvi::test
