#include "Quorvi/system/MemoryPreferences.h"

#include "tests/support/contracts/PreferencesContract.h"

namespace quorvi::test {
namespace {

class MemoryRig {
public:
    Preferences& preferences() { return preferences_; }
    void reopen() {}

private:
    MemoryPreferences preferences_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(InMemory, PreferencesContract, MemoryRig);

}  // namespace quorvi::test
