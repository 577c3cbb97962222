#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <stop_token>
#include <string>

#include "Quorvi/insertion/FieldInspector.h"
#include "Quorvi/insertion/InsertionTarget.h"
#include "Quorvi/insertion/TranscriptClipboard.h"
#include "Quorvi/platform/KeyEventPoster.h"
#include "Quorvi/platform/KeyEventTap.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/corrections/CorrectionContext.h"

namespace quorvi {

// Brings a transcript into the user's text field by way of the clipboard: saves what is on it, puts
// the transcript there, sends the paste keystroke, watches the field for a moment to confirm that
// the text arrived, and gives the user's clipboard back. Main thread; the accessibility queries run
// on the background executor, one at a time.
class TextInsertion {
public:
    using Counts = std::map<std::string, std::int64_t>;

    struct Environment {
        Scheduler& scheduler;
        Executor& queries;  // where blocking accessibility queries run
        Accessibility& accessibility;
        const Workspace& workspace;
        Pasteboard& pasteboard;
        KeyEventPoster& poster;
        const KeyEventTap& keyState;
    };

    // What one insertion needs of its caller, besides the text and where it goes.
    struct Request {
        bool learnCorrections = false;  // read the field before and after, to verify the paste
        std::function<void(const CorrectionContext&)> onVerifiedPaste;                // optional
        std::function<void(const std::string& code, const Counts&)> onLearningEvent;  // optional
        std::function<std::uint64_t()> currentInputGeneration;
        std::optional<TranscriptClipboard::Copy> clipboard;  // made ahead, optional
    };

    explicit TextInsertion(Environment environment);

    // The destination that has the focus now. Throws QuorviError with the sentence to show.
    Task<InsertionTarget> capture(std::uint64_t inputGeneration, std::stop_token stop);

    // Copies the user's clipboard while there is time, for the insertion that is coming: a large or
    // slow one then costs the user nothing. Throws nothing but Cancelled.
    Task<TranscriptClipboard::Copy> copyClipboardAhead(std::stop_token stop) {
        return clipboard_.copyAhead(std::move(stop));
    }

    // Pastes the text into the target. Yields the context of a verified paste, nothing when the
    // arrival could not be confirmed, which is no error. Throws QuorviError when nothing was
    // pasted; the caller then offers the text for a manual paste. Cancelled leaves the user's
    // clipboard as it was.
    Task<std::optional<CorrectionContext>> insert(std::string text, InsertionTarget target,
                                                  Request request, std::stop_token stop);

    // The text of the target's field, see FieldInspector::correctionField.
    Task<std::optional<std::string>> correctionField(InsertionTarget target, bool requireFocus,
                                                     std::stop_token stop);

    // Puts the transcript on the clipboard for good; whether it is there now.
    Task<bool> copyForManualPaste(std::string text, std::stop_token stop);

    void restoreClipboard() { clipboard_.restore(); }

private:
    struct Paste;

    Task<void> waitForModifiers(std::stop_token stop);
    Task<void> validate(const Paste& paste, std::stop_token stop);
    Task<void> readBefore(Paste& paste, std::stop_token stop);
    Task<void> sendPaste(Paste& paste, std::stop_token stop);
    Task<void> watchArrival(Paste& paste, std::stop_token stop);
    void reportArrival(Paste& paste, CorrectionContext context);
    void refuseChangedInput(const Paste& paste) const;
    void refuseLateChanges(const Paste& paste) const;
    bool modifiersArePressed() const;

    Environment environment_;
    FieldInspector inspector_;
    TranscriptClipboard clipboard_;
};

}  // namespace quorvi
