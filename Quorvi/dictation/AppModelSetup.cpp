#include <utility>

#include "Quorvi/dictation/AppModel.h"

// What the user tries while setting Quorvi up: a paste without a dictation, and another shortcut.
namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr int countdownSeconds = 10;
constexpr auto plainSample = "Hello, world. Καλημέρα, κόσμε.";
constexpr auto learningSample = "This is a test for oxygen.";

}  // namespace

void AppModel::armInsertionTest(bool learning) {
    if (isActive(stage_) || starting_ || shutDown_) return;
    set(canCopyFromOverlay_, false);
    refreshPermissions();
    if (!(accessibilityAllowed_ && keyboardReady_)) {
        fail("Enable Accessibility in Settings to test text insertion.");
        return;
    }
    dismissTimer_.cancel();
    insertionTestArmed_ = true;
    hotkey_.setCancelEnabled(true);
    stage_ = DictationStage::idle;
    insertionTestLearning_ = learning;
    message_ =
        "Click a text field in another app. A sample will be pasted in 10 seconds. Esc cancels.";
    changed();
    show();
    insertionTestTask_.cancel();
    insertionTestTask_ =
        tasks_.start([this](std::stop_token stop) { return countDown(std::move(stop)); });
}

Task<void> AppModel::countDown(std::stop_token stop) {
    for (int n = countdownSeconds; n > 0; --n) {
        set(message_, "Click a text field in another app. Sample in " + std::to_string(n) +
                          " seconds. Esc cancels.");
        auto second = sleepFor(environment_.scheduler, 1s, stop);
        co_await second;
    }
    runInsertionTest();
}

void AppModel::runInsertionTest() {
    if (!insertionTestArmed_) return;
    insertionTestTask_.cancel();
    insertionTestArmed_ = false;
    correctionObserver_.stop(true);
    // Busy from here on, so that the shortcut's release, or another press, starts nothing.
    stage_ = DictationStage::inserting;
    changed();
    uploadTask_ = tasks_.start([this, session = ++sessionID_](std::stop_token stop) {
        return insertSample(session, std::move(stop));
    });
}

Task<void> AppModel::insertSample(SessionID session, std::stop_token stop) {
    const bool learning = insertionTestLearning_;
    Dictation test{.session = session};
    std::optional<std::string> problem;
    bool verified = false;
    try {
        auto capturing = insertion_.capture(hotkey_.inputGeneration(), stop);
        test.target = co_await capturing;
        if (!isCurrent(session, stop)) co_return;
        set(message_, "Testing Paste in " + test.target.appName + "…");
        auto request = insertionRequest(test, {}, stop);
        request.learnCorrections = learning;
        auto inserting = insertion_.insert(learning ? learningSample : plainSample, test.target,
                                           std::move(request), stop);
        verified = (co_await inserting).has_value();
    } catch (const std::exception& error) {
        problem = error.what();
    }
    if (!isCurrent(session, stop)) co_return;
    if (problem) {
        fail(*problem);
        co_return;
    }
    if (learning && !verified)
        environment_.corrections.setLearningStatus(
            "The test pasted, but automatic learning could not attach to this editor.");
    message_ = "Sample sent to " + test.target.appName + ".";
    canCopyFromOverlay_ = false;
    stage_ = DictationStage::success;
    hotkey_.setCancelEnabled(false);
    changed();
    dismissOverlay(2s);
}

void AppModel::beginShortcutCapture() {
    if (isActive(stage_) || starting_ || shutDown_) return;
    if (insertionTestArmed_) cancel();  // its Escape would belong to the choice
    endShortcutCapture();
    isChoosingShortcut_ = true;
    hotkey_.setSuspended(true);
    modifierCapture_ = {};
    shortcutMonitor_ = environment_.localKeys.observe(
        [this](const LocalKeyEvent& event) { return captureShortcut(event); });
    changed();
}

void AppModel::endShortcutCapture() {
    shortcutMonitor_ = {};
    hotkey_.setSuspended(false);
    set(isChoosingShortcut_, false);
}

bool AppModel::captureShortcut(const LocalKeyEvent& event) {
    const bool isModifier = event.type == LocalKeyEvent::Type::flagsChanged;
    if (!isModifier && event.keyCode == keyCode::escape) {
        endShortcutCapture();
        return true;
    }
    auto chosen = isModifier ? modifierCapture_.modifierChanged(event.keyCode, event.flags)
                             : Hotkey::keyCombination(event.keyCode, event.flags, event.characters);
    if (chosen) {
        setShortcut(std::move(*chosen));
        endShortcutCapture();
        return true;
    }
    if (!isModifier) set(message_, std::string(Hotkey::keyCombinationRefusal));
    return !isModifier;
}

}  // namespace quorvi
