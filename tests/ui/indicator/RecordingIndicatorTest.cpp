#include "Quorvi/ui/indicator/RecordingAppearanceSettings.h"
#include "Quorvi/ui/indicator/RecordingPanel.h"
#include "tests/ui/WindowTest.h"

namespace quorvi::test {
namespace {

TEST(RecordingHUD, ShowsWhatBelongsToEachStage) {
    RecordingHUD hud;
    hud.show();
    const auto words = QStringLiteral("Words");
    const std::pair<RecordingHUD::Values, const char*> rows[] = {
        {{.stage = DictationStage::recording, .message = words, .elapsed = 65},
         "Listening… | 1:05 | Words | Esc to cancel"},
        {{.stage = DictationStage::recording, .message = words, .hasEscape = false},
         "Listening… | 0:00 | Words"},
        {{.stage = DictationStage::learned, .message = words}, "Correction saved | Words"},
        {{.stage = DictationStage::clipboard, .onCopy = [] {}},
         "Ready to paste | [Copy transcript]"},
        {{.stage = DictationStage::failure, .message = words, .onRetry = [] {}},
         "Needs attention | Words | [Try again]"}};
    for (const auto& [values, text] : rows) {
        hud.setValues(values);
        EXPECT_EQ(Seen(hud).text(), text);
    }
}

TEST(RecordingHUD, OnlyGlassFollowsDarkAndAFailureIsWarmOnMidnight) {
    const auto theme = [](RecordingTheme which, bool dark) {
        return ThemePalette::of(which, desktopPalette(dark));
    };
    const auto failure = [&](RecordingTheme which) {
        return theme(which, false).stateAccent(DictationStage::failure).name();
    };
    EXPECT_EQ(failure(RecordingTheme::midnight), QColor::fromRgbF(1, 0.69F, 0.52F).name());
    EXPECT_EQ(failure(RecordingTheme::glass), failure(RecordingTheme::paper));
    EXPECT_NE(theme(RecordingTheme::glass, true).ink, theme(RecordingTheme::glass, false).ink);
    EXPECT_EQ(theme(RecordingTheme::paper, true).ink, theme(RecordingTheme::paper, false).ink);
}

TEST(RecordingHUD, NothingMovesWhileHidden) {
    RecordingHUD hud;
    for (const auto stage : {DictationStage::recording, DictationStage::inserting}) {
        for (const bool shown : {false, true, false}) {
            hud.setVisible(shown);
            hud.setValues({.stage = stage, .level = shown ? 1 : 0.2});
            EXPECT_EQ(part<LevelMeter>(hud)->isMoving() || part<StageSign>(hud)->isSpinning(),
                      shown);
        }
    }
}

// The indicator on the real controller.
class RecordingPanelFollows : public testing::Test {
protected:
    RecordingPanelFollows() {
        world.saveKey();
        world.offerUpdate("a package", "News");
        world.model.showOverlay = [this] { panel.present(); };
        world.model.hideOverlay = [this] { panel.hide(); };
    }
    ~RecordingPanelFollows() override {
        world.model.showOverlay = world.model.hideOverlay = [] {};
    }

    WindowWorld world;
    RecordingPanel panel{world.model, world.updater,
                         [] { return Surroundings{.isComposited = true}; }};
};

TEST_F(RecordingPanelFollows, AnUpdateIsOfferedOnlyWhileRecording) {
    world.scheduler.advance(24h);
    ASSERT_TRUE(world.updater.availableVersion());
    panel.present();
    EXPECT_FALSE(panel.acceptsMouse());
    EXPECT_FALSE(Seen(panel).has("Update"));
    world.beginDictation();
    world.scheduler.advance(1s);
    EXPECT_TRUE(panel.acceptsMouse());
    Seen(panel).press("Update 2.0");
    EXPECT_NE(world.updater.stage(), UpdateStage::idle);
    world.model.finish();
    world.scheduler.advance(1s);
    EXPECT_FALSE(Seen(panel).has("Update"));
    world.updater.close();
}

}  // namespace
}  // namespace quorvi::test
