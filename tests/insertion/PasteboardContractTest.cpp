#include "tests/support/contracts/PasteboardContract.h"

#include "tests/fakes/FakePasteboard.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi::test {
namespace {

class FakeRig {
public:
    FakePasteboard& pasteboard() { return pasteboard_; }
    bool runUntil(const std::function<bool()>& condition) {
        for (int turn = 0; turn < 1000 && !condition(); ++turn)
            scheduler_.advance(std::chrono::milliseconds(10));
        return condition();
    }
    void foreignCopy(std::vector<PasteboardItem> items) { pasteboard_.copy(std::move(items)); }
    pid_t foreignRead() {
        pasteboard_.readBy(77);
        return 77;
    }
    void foreignHang() { pasteboard_.ownerHangs = true; }

private:
    VirtualScheduler scheduler_;
    FakePasteboard pasteboard_{scheduler_};
};

}  // namespace

// The clipboard of the other model tests keeps the promises of the desktop's own.
INSTANTIATE_TYPED_TEST_SUITE_P(InMemory, PasteboardContract, FakeRig);

}  // namespace quorvi::test
