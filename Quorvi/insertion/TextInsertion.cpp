#include "Quorvi/insertion/TextInsertion.h"

#include <utility>

#include "Quorvi/insertion/PasteKeyboard.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Future.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration pollInterval = 50ms;
constexpr int modifierPolls = 40;
constexpr Duration verificationWindow = 900ms;
// How long a program that looks at a new clipboard before it can paste it may take for that.
constexpr Duration readerWait = 60ms;

// Restores the clipboard however the insertion ends, also if its frame is destroyed, unless told to
// leave it.
class ClipboardGuard {
public:
    explicit ClipboardGuard(TranscriptClipboard& clipboard) : clipboard_(clipboard) {}
    ~ClipboardGuard() {
        if (restores_) clipboard_.restore();
    }
    void leave() { restores_ = false; }
    ClipboardGuard(const ClipboardGuard&) = delete;
    ClipboardGuard& operator=(const ClipboardGuard&) = delete;

private:
    TranscriptClipboard& clipboard_;
    bool restores_ = true;
};

}  // namespace

// One insertion under way.
struct TextInsertion::Paste {
    std::string text;
    InsertionTarget target;
    Request request;

    std::optional<std::string> fieldBefore;
    std::optional<CorrectionContext> expected;  // from the field before the paste
    std::optional<CorrectionContext> verified;  // from the field after it
    bool clipboardIsLost = false;
    std::int64_t lengthAfter = -1;
    std::string outcome;  // reported when nothing was verified

    void report(const std::string& code, const Counts& counts = {}) const {
        if (request.onLearningEvent) request.onLearningEvent(code, counts);
    }
};

TextInsertion::TextInsertion(Environment environment)
    : environment_(environment),
      inspector_(environment.scheduler, environment.accessibility, environment.workspace),
      clipboard_(environment.pasteboard) {}

Task<InsertionTarget> TextInsertion::capture(std::uint64_t inputGeneration, std::stop_token stop) {
    auto query = inBackground(
        environment_.queries, environment_.scheduler,
        [inspector = inspector_, inputGeneration] { return inspector.capture(inputGeneration); },
        std::move(stop));
    co_return co_await query;
}

Task<InsertionTarget> TextInsertion::completed(InsertionTarget target, std::stop_token stop) {
    auto query = inBackground(
        environment_.queries, environment_.scheduler,
        [inspector = inspector_, target = std::move(target)] {
            return inspector.completed(target);
        },
        std::move(stop));
    co_return co_await query;
}

Task<std::optional<std::string>> TextInsertion::correctionField(InsertionTarget target,
                                                                bool requireFocus,
                                                                std::stop_token stop) {
    auto query = inBackground(
        environment_.queries, environment_.scheduler,
        [inspector = inspector_, target = std::move(target), requireFocus] {
            return inspector.correctionField(target, requireFocus);
        },
        std::move(stop));
    co_return co_await query;
}

Task<bool> TextInsertion::copyForManualPaste(std::string text, std::stop_token stop) {
    auto copying = clipboard_.copyPermanently(std::move(text), std::move(stop));
    co_return co_await copying;
}

bool TextInsertion::modifiersArePressed() const {
    return PasteKeyboard::physicalModifiersArePressed(
        [this](KeyCode key) { return environment_.keyState.keyIsDown(key); });
}

Task<TextInsertion::Outcome> TextInsertion::insert(std::string text, InsertionTarget target,
                                                   Request request, std::stop_token stop) {
    Paste paste{
        .text = std::move(text), .target = std::move(target), .request = std::move(request)};

    auto released = waitForModifiers(stop);
    co_await released;
    auto firstCheck = validate(paste, stop);
    co_await firstCheck;
    if (modifiersArePressed()) throw QuorviError::message(say::modifierHeld());
    auto before = readBefore(paste, stop);
    co_await before;

    clipboard_.restore();
    ClipboardGuard guard(clipboard_);
    auto sending = sendPaste(paste, stop);
    co_await sending;
    auto arrival = watchArrival(paste, stop);
    co_await arrival;
    const bool isTaken = paste.verified || clipboard_.wasTakenBy(paste.target.pid);
    if (!isTaken) {
        guard.leave();
        auto keeping = clipboard_.keepTranscript(paste.text);
        co_await keeping;
    }
    co_return Outcome{std::move(paste.verified), isTaken, paste.clipboardIsLost};
}

Task<void> TextInsertion::waitForModifiers(std::stop_token stop) {
    for (int polls = 0; polls < modifierPolls && modifiersArePressed(); ++polls) {
        auto pause = sleepFor(environment_.scheduler, pollInterval, stop);
        co_await pause;
    }
}

Task<void> TextInsertion::validate(const Paste& paste, std::stop_token stop) {
    const auto generation = paste.request.currentInputGeneration();
    auto query = inBackground(
        environment_.queries, environment_.scheduler,
        [inspector = inspector_, target = paste.target, generation] {
            inspector.validate(target, generation);
        },
        std::move(stop));
    co_await query;
    refuseChangedInput(paste);
}

// The user may have typed or clicked while this waited for a query or the clipboard.
void TextInsertion::refuseChangedInput(const Paste& paste) const {
    const auto frontmost = environment_.workspace.frontmostApplication();
    if (paste.request.currentInputGeneration() != paste.target.inputGeneration || !frontmost ||
        frontmost->pid != paste.target.pid)
        throw QuorviError::message(say::destinationChanged());
}

// The last check before the keystroke; does not wait for anything.
void TextInsertion::refuseLateChanges(const Paste& paste) const {
    refuseChangedInput(paste);
    if (modifiersArePressed()) throw QuorviError::message(say::releaseModifiers());
}

Task<void> TextInsertion::readBefore(Paste& paste, std::stop_token stop) {
    const auto& selection = paste.target.selection;
    if (!paste.request.learnCorrections) {
        paste.outcome = selection ? "paste.beforeUnavailable" : "paste.noSelection";
        co_return;
    }
    if (!selection) {
        auto asking = completed(paste.target, stop);
        paste.target = co_await asking;
        refuseChangedInput(paste);
    }
    auto reading = correctionField(paste.target, true, std::move(stop));
    paste.fieldBefore = co_await reading;
    if (!selection) {
        paste.outcome = "paste.noSelection";
    } else if (!paste.fieldBefore) {
        paste.outcome = "paste.beforeUnavailable";
    } else {
        paste.expected = CorrectionContext::make(*paste.fieldBefore, *selection, paste.text);
        paste.outcome = paste.expected ? "paste.afterUnavailable" : "paste.invalidRange";
        paste.report("paste.before", {{"length", text::utf16Length(*paste.fieldBefore)},
                                      {"selection", selection->location},
                                      {"selectedLength", selection->length},
                                      {"transcriptLength", text::utf16Length(paste.text)}});
    }
}

Task<void> TextInsertion::sendPaste(Paste& paste, std::stop_token stop) {
    auto taking = clipboard_.snapshot(std::move(paste.request.clipboard), stop);
    auto backup = co_await taking;
    const auto events = PasteKeyboard::pasteEvents(environment_.poster);
    auto asking = environment_.poster.looksBeforePasting(paste.target.pid, stop);
    const bool looksFirst = co_await asking;
    auto lastCheck = validate(paste, stop);
    co_await lastCheck;
    refuseLateChanges(paste);
    paste.clipboardIsLost = !backup.items;
    auto installing = clipboard_.installTemporary(paste.text, std::move(backup), stop);
    co_await installing;
    if (looksFirst) {
        auto attention = waitForReader(paste, stop);
        co_await attention;
    }
    refuseLateChanges(paste);
    if (!environment_.poster.isAvailable()) throw QuorviError::message(say::couldNotPaste());
    environment_.poster.post(events, paste.target.pid);
}

Task<void> TextInsertion::waitForReader(const Paste& paste, std::stop_token stop) {
    const auto pid = paste.target.pid;
    if (clipboard_.wasAskedBy(pid)) co_return;
    Promise<void> ready(environment_.scheduler);
    auto future = ready.future(std::move(stop));
    const auto timer =
        environment_.scheduler.after(readerWait, [ready]() mutable { ready.resolve(); });
    const auto reads = clipboard_.onRead([this, pid, ready]() mutable {
        if (clipboard_.wasAskedBy(pid)) ready.resolve();
    });
    co_await future;
}

Task<void> TextInsertion::watchArrival(Paste& paste, std::stop_token stop) {
    const bool learns = paste.request.learnCorrections;
    const auto deadline = environment_.scheduler.now() + verificationWindow;
    // The transcript stays on the clipboard for the whole window, even after it has arrived.
    while (environment_.scheduler.now() < deadline) {
        auto pause = sleepFor(environment_.scheduler, pollInterval, stop);
        co_await pause;
        if (!learns || paste.verified) continue;
        auto reading = correctionField(paste.target, true, stop);
        const auto after = co_await reading;
        if (!after) continue;
        paste.lengthAfter = text::utf16Length(*after);
        paste.outcome = "paste.valueMismatch";
        if (auto context = CorrectionContext::verified(paste.fieldBefore, paste.target.selection,
                                                       paste.text, *after))
            reportArrival(paste, std::move(*context));
    }
    if (!paste.verified && learns) {
        const auto expectedLength =
            paste.expected ? text::utf16Length(paste.expected->expectedField()) : -1;
        paste.report(paste.outcome,
                     {{"afterLength", paste.lengthAfter}, {"expectedLength", expectedLength}});
    }
}

void TextInsertion::reportArrival(Paste& paste, CorrectionContext context) {
    const bool asExpected =
        paste.expected && text::equal(paste.expected->expectedField(), context.expectedField());
    paste.report(asExpected ? "paste.verified" : "paste.verifiedWholeField");
    paste.verified = std::move(context);
    if (paste.request.onVerifiedPaste) paste.request.onVerifiedPaste(*paste.verified);
}

}  // namespace quorvi
