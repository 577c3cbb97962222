#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/ui/OffscreenQt.h"

namespace quorvi::test {

// Including this gives every test of a program the same application without a screen.
class OffscreenEnvironment : public testing::Environment {
public:
    void SetUp() override { application_ = std::make_unique<OffscreenQt>(); }
    void TearDown() override { application_.reset(); }

private:
    std::unique_ptr<OffscreenQt> application_;
};

inline auto* const offscreenEnvironment =
    testing::AddGlobalTestEnvironment(new OffscreenEnvironment);

}  // namespace quorvi::test
