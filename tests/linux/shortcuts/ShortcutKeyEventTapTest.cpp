#include "Quorvi/platform/linux/shortcuts/ShortcutKeyEventTap.h"

#include <gtest/gtest.h>

#include "Quorvi/input/GlobalHotkey.h"
#include "tests/fakes/FakeAccessibility.h"

namespace quorvi::test {
namespace {

using enum ShortcutSource::Change;

constexpr SwallowedKey f8{100, 0}, escape{keyCode::escape, 0};

struct FakeSource : ShortcutSource {
    Support support() const override { return {.release = hasRelease, .escape = true}; }
    void bind(std::vector<SwallowedKey> wanted) override { keys = std::move(wanted); }
    bool isBound() const override { return holds; }
    void start(std::function<void(const SwallowedKey&, Change)> onChange,
               std::function<void()> onBound) override {
        changed = std::move(onChange);
        boundChanged = std::move(onBound);
    }
    void hold(bool now) {
        holds = now;
        boundChanged();
    }

    std::vector<SwallowedKey> keys;
    bool holds = false, hasRelease = true;
    std::function<void(const SwallowedKey&, Change)> changed;
    std::function<void()> boundChanged;
};

TEST(ShortcutKeyEventTap, AShortcutIsHeldCancelledLostAndGivenBack) {
    VirtualScheduler scheduler;
    FakeAccessibility accessibility{scheduler};
    auto made = std::make_unique<FakeSource>();
    auto& desktop = *made;
    std::string heard;
    ShortcutKeyEventTap tap(scheduler, std::move(made), [&] { heard += "valid "; });
    GlobalHotkey hotkey(scheduler, tap, accessibility);
    hotkey.onTransition = [&](bool down) { heard += down ? "press " : "release "; };
    hotkey.onCancel = [&] { heard += "cancel "; };
    hotkey.onInterruption = [&] { heard += "interruption "; };
    const auto takeHeard = [&] {
        scheduler.settle();
        return std::exchange(heard, {});
    };
    hotkey.setShortcut(Hotkey::f8);
    EXPECT_FALSE(hotkey.start());
    desktop.hold(true);
    EXPECT_TRUE(hotkey.start());
    desktop.changed(f8, pressed);
    hotkey.setCancelEnabled(true);
    EXPECT_EQ(desktop.keys, (std::vector{f8, escape}));
    desktop.changed(escape, pressed);
    desktop.changed(f8, released);
    EXPECT_EQ(takeHeard(), "valid press cancel release ");
    hotkey.setCancelEnabled(false);

    desktop.changed(f8, pressed);
    EXPECT_EQ(takeHeard(), "press ");
    desktop.hold(false);
    EXPECT_EQ(takeHeard(), "interruption ");
    hotkey.start();  // installs anew, without giving the keys back in between
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_EQ(desktop.keys, std::vector{f8});
    desktop.hold(true);
    desktop.hasRelease = false;
    hotkey.setCancelEnabled(true);
    desktop.changed(f8, pressed);
    EXPECT_EQ(takeHeard(), "valid press ");
    desktop.changed(f8, pressed);
    EXPECT_EQ(takeHeard(), "release ") << "without releases the next press ends a dictation";
    desktop.changed(f8, pressed);
    takeHeard();
    hotkey.setCancelEnabled(false);  // it has ended by itself
    desktop.changed(f8, pressed);
    EXPECT_EQ(takeHeard(), "press ");

    hotkey.stop();
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_TRUE(desktop.keys.empty());
}

}  // namespace
}  // namespace quorvi::test
