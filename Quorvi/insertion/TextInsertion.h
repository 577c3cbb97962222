#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string>

#include "Quorvi/insertion/FieldInspector.h"
#include "Quorvi/insertion/InsertionTarget.h"
#include "Quorvi/insertion/TranscriptClipboard.h"
#include "Quorvi/platform/KeyEventPoster.h"
#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/TextCommitter.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/corrections/CorrectionContext.h"

namespace quorvi {

// Inserts a transcript into the user's text field: commits it where the field takes that, else
// pastes it, where no keys can be posted by asking the field. A paste saves the clipboard's
// content, puts the transcript there, sends the paste keystroke, watches the field for a moment to
// verify that the text has arrived, and restores the clipboard. What may have arrived is never sent
// again. Main thread; accessibility queries run on the background executor, one at a time. Owned by
// the controller; its environment outlives it.
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
        TextCommitter* committer = nullptr;
    };

    // What an insertion needs besides the text and the target.
    struct Request {
        bool learnCorrections = false;  // read the field before and after, to verify the paste
        std::function<void(const CorrectionContext&)> onVerifiedPaste;                // optional
        std::function<void(const std::string& code, const Counts&)> onLearningEvent;  // optional
        std::function<std::uint64_t()> currentInputGeneration;
        std::optional<TranscriptClipboard::Copy> clipboard;  // copied in advance, optional
    };

    // How an insertion that pasted or committed has ended.
    struct Outcome {
        std::optional<CorrectionContext> verified;  // the text was seen in the field
        // The target's program has taken the text. Otherwise it stays on the clipboard until
        // restoreClipboard().
        bool isTaken = false;
        bool clipboardIsLost = false;  // its owner gave the former content to nobody
        bool isCommitted = false;      // without the clipboard
    };

    explicit TextInsertion(Environment environment);

    // Returns the focused field or application, see FieldInspector::capture. Also refuses a field
    // that only says to an input method that it is a password.
    Task<InsertionTarget> capture(std::uint64_t inputGeneration, std::stop_token stop);

    // Asks again for what was not told at the capture, see FieldInspector::completed.
    Task<InsertionTarget> completed(InsertionTarget target, std::stop_token stop);

    // Copies the user's clipboard in advance, so that the user does not wait for a large or slow
    // one. Without items where that will not be needed. Throws only Cancelled.
    Task<TranscriptClipboard::Copy> copyClipboardAhead(InsertionTarget target,
                                                       std::stop_token stop);

    // Puts the text into the target. Throws QuorviError if that was not tried; the caller then
    // offers the text for a manual paste. The clipboard is restored, unless nobody took the text.
    Task<Outcome> insert(std::string text, InsertionTarget target, Request request,
                         std::stop_token stop);

    // Returns the text of the target's field, see FieldInspector::correctionField.
    Task<std::optional<std::string>> correctionField(InsertionTarget target, bool requireFocus,
                                                     std::stop_token stop);

    // Puts the transcript on the clipboard permanently. Returns whether that succeeded.
    Task<bool> copyForManualPaste(std::string text, std::stop_token stop);

    void restoreClipboard() { clipboard_.restore(); }
    // A transcript is on the clipboard, and the user's content can be restored.
    bool holdsClipboard() const { return clipboard_.isHolding(); }

private:
    struct Paste;

    Task<void> waitForModifiers(std::stop_token stop);
    Task<void> validate(const Paste& paste, std::stop_token stop);
    Task<void> readBefore(Paste& paste, std::stop_token stop);
    Task<void> commit(Paste& paste, std::stop_token stop);
    Task<Outcome> pasteText(Paste& paste, std::stop_token stop);
    Task<void> sendPaste(Paste& paste, std::stop_token stop);
    Task<void> leaveOnClipboard(Paste& paste, std::stop_token stop);
    Task<void> askFieldToPaste(const Paste& paste, std::stop_token stop);
    Task<void> waitForReader(const Paste& paste, std::stop_token stop);
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
