#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "Quorvi/corrections/CorrectionStore.h"
#include "Quorvi/insertion/InsertionTarget.h"
#include "QuorviCore/corrections/CorrectionContext.h"

namespace quorvi {

// Watches the user's own edit of a verified paste. Main thread.
class CorrectionObserver {
public:
    virtual ~CorrectionObserver() = default;

    // Begins to watch; `runTimer` false leaves the sampling to the caller.
    virtual void start(const CorrectionContext& context, const InsertionTarget& target,
                       CorrectionStore& store, std::vector<TextCorrection> appliedRules,
                       bool runTimer, std::function<std::uint64_t()> inputGeneration) = 0;

    // Ends the watch; with `remember`, after a last look at what the user made of the text.
    virtual void stop(bool remember) = 0;
};

// Watches nothing: rules come from the user alone.
class NoCorrectionObserver final : public CorrectionObserver {
public:
    void start(const CorrectionContext&, const InsertionTarget&, CorrectionStore&,
               std::vector<TextCorrection>, bool, std::function<std::uint64_t()>) override {}
    void stop(bool) override {}
};

}  // namespace quorvi
